// The texts of the shared layouts (resources/dialogs) in this language.
// One line per subsystem file.
#pragma once
#include "datetime_texts.h"
#include "printing_texts.h"
