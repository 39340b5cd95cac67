// Marks what a program that links the library may call; everything else stays hidden.
#pragma once

/// What stands before a declaration that a shared TernCoreKit exports. TERN_SHARED, which the CMake
/// target and the pkg-config file define, says that the library is one. In a static library nothing
/// is marked, so that a plugin which links it exports nothing of it.
#if defined(TERN_SHARED) && defined(__GNUC__)
#define TERN_API __attribute__((visibility("default")))
#else
#define TERN_API
#endif

/// What stands before a private function of a class that TERN_API marks, when only the library
/// calls it: one whose types are of the inside.
#if defined(__GNUC__)
#define TERN_INTERNAL __attribute__((visibility("hidden")))
#else
#define TERN_INTERNAL
#endif
