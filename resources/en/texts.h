// The texts of the shared layouts (resources/dialogs) in this language.
// One line per subsystem file.
#pragma once
#include "controls_windows_texts.h"
