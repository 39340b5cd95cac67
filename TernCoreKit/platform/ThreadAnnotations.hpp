/// @file
/// Says which lock guards what, for Clang to check as it compiles (-Wthread-safety); other
/// compilers see nothing.
///
///     Mutex mutex_;
///     std::string text_ TERN_GUARDED_BY(mutex_);
#pragma once

/// What Clang is told of a declaration.
#if defined(__clang__)
#define TERN_THREAD_ATTRIBUTE(...) __attribute__((__VA_ARGS__))
#else
#define TERN_THREAD_ATTRIBUTE(...)
#endif

/// Behind a field: it is read and written only while the lock is held.
#define TERN_GUARDED_BY(lock) TERN_THREAD_ATTRIBUTE(guarded_by(lock))
/// Behind a pointer: what it points to is read and written only while the lock is held.
#define TERN_PT_GUARDED_BY(lock) TERN_THREAD_ATTRIBUTE(pt_guarded_by(lock))
/// Behind a function: whoever calls it holds the lock.
#define TERN_REQUIRES(lock) TERN_THREAD_ATTRIBUTE(requires_capability(lock))
/// Behind a function: what it answers with is that lock.
#define TERN_RETURNS_LOCK(lock) TERN_THREAD_ATTRIBUTE(lock_returned(lock))
