/* tavona32: common routines of the Tavona application family.
 * Include this header, link tavona32 (libtavona32.dll.a for MinGW,
 * tavona32.lib for MSVC) and ship tavona32.dll with its language folders
 * en\ and de\ (tavona32Res.dll) beside the program. */
#ifndef TAVONA_TAVONA32_H
#define TAVONA_TAVONA32_H

#include "frame.h"
#include "text.h"
#include "datetime.h"
#include "settings.h"
#include "controls.h"
#include "files.h"
#include "translation.h"
#include "printing.h"

#endif
