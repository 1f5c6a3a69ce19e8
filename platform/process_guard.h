// SPDX-License-Identifier: MIT
#pragma once

namespace calvorn {

// Has the kernel kill this process when its parent dies, even when this process is stopped or hung
// (prctl(2), PR_SET_PDEATHSIG). To be called first thing in main(). Returns false when the parent died just before
// the kernel was told, in which case the caller ends by itself.
bool endWithParent();

} // namespace calvorn
