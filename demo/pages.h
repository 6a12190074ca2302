// The tab pages of the demo, one per capability of the library.
//
// Adding a page: write demo/page_<name>.cpp with a function
//   HWND Create<Name>Page(HWND parent);
// that returns a hidden child window of parent (usually a demo::Page built
// with a demo::Form, see ui.h and page_strings.cpp), and add one line
//   DEMO_PAGE(L"<Tab title>", Create<Name>Page)
// to demo/pages.inc at the place the tab should have. CMake picks up every
// page_*.cpp by itself.
#pragma once

#include <windows.h>

#include <cstddef>

struct DemoPage {
  const wchar_t *title;
  HWND (*create)(HWND parent);
};

// The pages in tab order.
const DemoPage *DemoPages(std::size_t *count);
