#define T_DEMO_CAPTION "Demo"
#define T_CANCEL "Abbrechen"
