// Test controls of the host build's base seam.
#pragma once

namespace tv::plat::host {

// Makes every allocation fail, to test the out-of-memory paths.
void SetFailAllocations(bool fail);
// How many lines DebugOutput has written so far.
int DebugOutputCount();

}  // namespace tv::plat::host
