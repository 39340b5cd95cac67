/* Prints how many bytes of memory a venue takes that stays open: of so many that are opened besides
 * the first, which leaves behind what reading needs.
 *
 *   opens FOLDER TIMES */
#define _POSIX_C_SOURCE 199309L
#include <TernCoreKit/c/tern.h>
#include <stdio.h>
#include <stdlib.h>
#include <unistd.h>

static long resident(void) {
  long pages = 0;
  FILE* file = fopen("/proc/self/statm", "r");
  if (!file || fscanf(file, "%*d %ld", &pages) != 1) exit(1);
  fclose(file);
  return pages * sysconf(_SC_PAGESIZE);
}

int main(int count, char** words) {
  if (count != 3) return 2;
  const long times = atol(words[2]);
  if (!tern_venue_open_folder(words[1], NULL, NULL)) return 1;
  const long before = resident();
  for (long i = 0; i < times; ++i) {
    if (!tern_venue_open_folder(words[1], NULL, NULL)) return 1;
  }
  printf("%ld\n", (resident() - before) / times);
  return 0;
}
