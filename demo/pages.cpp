#include "pages.h"

#define DEMO_PAGE(title, create) HWND create(HWND parent);
#include "pages.inc"
#undef DEMO_PAGE

namespace {

const DemoPage kPages[] = {
#define DEMO_PAGE(title, create) {title, create},
#include "pages.inc"
#undef DEMO_PAGE
};

}  // namespace

const DemoPage *DemoPages(std::size_t *count) {
  *count = sizeof kPages / sizeof kPages[0];
  return kPages;
}
