/* Asks a venue folder one request again and again, and prints the nanoseconds of the processor that
 * an answer took.
 *
 *   ask FOLDER REQUEST TIMES */
#define _POSIX_C_SOURCE 199309L
#include <TernCoreKit/c/tern.h>
#include <stdio.h>
#include <stdlib.h>
#include <time.h>

static double nanoseconds(void) {
  struct timespec now;
  clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &now);
  return (double)now.tv_sec * 1e9 + (double)now.tv_nsec;
}

int main(int count, char** words) {
  if (count != 4) return 2;
  tern_venue* venue = tern_venue_open_folder(words[1], NULL, NULL);
  if (!venue) return 1;
  const long times = atol(words[3]);
  const double begin = nanoseconds();
  for (long i = 0; i < times; ++i) tern_text_free(tern_venue_answer(venue, words[2]));
  printf("%.0f\n", (nanoseconds() - begin) / (double)times);
  tern_venue_close(venue, NULL);
  return 0;
}
