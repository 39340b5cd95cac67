/* A program in C11 that uses each function of the C interface, as its users do.
 *
 * Threads: one at a time. Fails: by the text of the first thing that was not as it should be. */
#ifndef TERN_TESTS_C_WHOLE_INTERFACE_H
#define TERN_TESTS_C_WHOLE_INTERFACE_H

#ifdef __cplusplus
extern "C" {
#endif

/* With the folder of the sample venue. NULL: all was as it should be. */
const char* drive_whole_interface(const char* folder);

#ifdef __cplusplus
}
#endif

#endif
