#define T_DEMO_CAPTION "Demo"
#define T_DEMO_LABEL "Label:"
#define T_CANCEL "Cancel"
