// TERN_TESTS_SANITIZED where the tests are compiled for the address or the thread sanitizer, which
// map more memory than a test may give.
#pragma once

#if defined(__has_feature)
#if __has_feature(address_sanitizer) || __has_feature(thread_sanitizer)
#define TERN_TESTS_SANITIZED
#endif
#endif
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
#define TERN_TESTS_SANITIZED
#endif
