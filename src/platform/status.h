// The status word that every platform call returns: 0 for success, otherwise a platform error code whose
// text cerr_strerror() gives (see text.h).
#pragma once

#include <cstdint>

using cerr_t = uint32_t;

inline constexpr cerr_t kCerrOk = 0;
