// The texts of the shared layouts (resources/dialogs) in this language.
// One line per subsystem file.
#pragma once

// Buttons that every dialog shares.
#define T_OK "OK"
#define T_CANCEL "Abbrechen"
#define T_HELP "&Hilfe"

#include "controls_texts.h"
#include "data_texts.h"
#include "numbers_texts.h"
#include "translation_texts.h"
#include "files_texts.h"
#include "settings_texts.h"
#include "lists_texts.h"
#include "controls_windows_texts.h"
#include "datetime_texts.h"
#include "printing_texts.h"
