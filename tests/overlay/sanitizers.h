// SPDX-License-Identifier: MIT
#pragma once

/// Whether this program was built with the address sanitizer: slower, and keeping what was freed.
#if defined(__SANITIZE_ADDRESS__)
inline constexpr bool sanitized = true;
#elif defined(__has_feature)
inline constexpr bool sanitized = __has_feature(address_sanitizer);
#else
inline constexpr bool sanitized = false;
#endif
