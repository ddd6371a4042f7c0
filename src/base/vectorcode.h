// Highway's settings, for the sources with vector code: each includes this file before any header of Highway,
// and is then compiled once for every instruction set chosen here (<hwy/foreach_target.h>).
//
// Only headers are used. Highway's library, which has its own way to detect instruction sets and to choose
// among them, is a shared one in Debian.
#pragma once

#ifdef HWY_DISABLED_TARGETS
#error "include base/vectorcode.h before the headers of Highway"
#endif

// SSE4 is no faster here than SSSE3, and AVX-512 saves little (docs/performance.md). Scalar and emulated
// vectors are Highway's stand-ins for processors without any of these, one of which has to stay.
#define HWY_DISABLED_TARGETS                                                                                 \
    (~(HWY_SCALAR | HWY_EMU128 | HWY_SSSE3 | HWY_AVX2 | HWY_NEON | ZU_NEON_WITHOUT_AES))
#ifndef __x86_64__
#define HWY_COMPILE_ONLY_STATIC // what the compiler takes for granted: NEON on 64-bit ARM
#endif

// Integers of 16 bits do not need these, so a processor may lack them.
#define HWY_DISABLE_PCLMUL_AES
#define HWY_DISABLE_BMI2_FMA
#define HWY_DISABLE_F16C

#include <hwy/detect_targets.h>

// Highway 1.0.3 has no such target; 1.2 compiles for it where the compiler does not take AES for granted.
#ifdef HWY_NEON_WITHOUT_AES
#define ZU_NEON_WITHOUT_AES HWY_NEON_WITHOUT_AES
#else
#define ZU_NEON_WITHOUT_AES 0
#endif

// Whether the code that is being compiled has vectors at all.
#define ZU_HAS_VECTORS (HWY_TARGET != HWY_SCALAR && HWY_TARGET != HWY_EMU128)

// ZU_BEST_OF(name, targets, portable): the function or variable of this name, in the innermost namespace of
// each instruction set, that is compiled for the best of the targets; portable if it is for none of them.
#define ZU_BEST_OF(name, targets, portable)                                                                  \
    ZU_IF_AVX2(name, targets, ZU_IF_SSSE3(name, targets, ZU_IF_NEON(name, targets, portable)))

#if HWY_TARGETS & HWY_AVX2
#define ZU_IF_AVX2(name, targets, rest) (((targets) & HWY_AVX2) != 0 ? N_AVX2::name : (rest))
#else
#define ZU_IF_AVX2(name, targets, rest) (rest)
#endif
#if HWY_TARGETS & HWY_SSSE3
#define ZU_IF_SSSE3(name, targets, rest) (((targets) & HWY_SSSE3) != 0 ? N_SSSE3::name : (rest))
#else
#define ZU_IF_SSSE3(name, targets, rest) (rest)
#endif
#if HWY_TARGETS & HWY_NEON
#define ZU_IF_NEON(name, targets, rest) (((targets) & HWY_NEON) != 0 ? N_NEON::name : (rest))
#elif HWY_TARGETS & ZU_NEON_WITHOUT_AES
#define ZU_IF_NEON(name, targets, rest)                                                                      \
    (((targets) & ZU_NEON_WITHOUT_AES) != 0 ? N_NEON_WITHOUT_AES::name : (rest))
#else
#define ZU_IF_NEON(name, targets, rest) (static_cast<void>(targets), rest)
#endif
