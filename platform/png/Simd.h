#pragma once

/// Put before a function with loops over pixels: compiled once for any processor of the kind and once for
/// those with 32-byte vectors, chosen when the program starts. Thread sanitizer cannot start with that.
#if defined(__x86_64__) && !defined(__SANITIZE_THREAD__)
#define GLIMMERLY_SIMD [[gnu::target_clones("avx2", "default")]]
#else
#define GLIMMERLY_SIMD
#endif
