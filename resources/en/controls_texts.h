// controls: the progress indicator
#define T_PROGRESS_CAPTION "Progress"
