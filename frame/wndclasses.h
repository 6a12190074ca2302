// The library's four global window classes.
#pragma once

#include <windows.h>

namespace tv {

void RegisterWindowClasses(HINSTANCE instance);
void UnregisterWindowClasses(HINSTANCE instance);

}  // namespace tv

// Their window procedures, implemented by the controls.
extern "C" {
LRESULT CALLBACK WndProcButtons(HWND, UINT, WPARAM, LPARAM);
LRESULT CALLBACK WndProcStatus(HWND, UINT, WPARAM, LPARAM);
LRESULT CALLBACK WndProcTempWind(HWND, UINT, WPARAM, LPARAM);
LRESULT CALLBACK WndProcButtPopup(HWND, UINT, WPARAM, LPARAM);
}
