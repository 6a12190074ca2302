// The texts of the shared layouts (resources/dialogs) in this language.
// One line per subsystem file.
#pragma once
#include "lists_texts.h"
