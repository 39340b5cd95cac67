// Marks what a program that links the library may call; everything else stays hidden.
#pragma once

#if defined(__GNUC__)
#define TERN_API __attribute__((visibility("default")))
#else
#define TERN_API
#endif
