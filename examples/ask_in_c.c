/* Opens a venue folder and asks it what stands on the command line, in C11.
 *
 *   ask_in_c data/plaza '{"op":"route","from":22001,"to":14016}' */
#include <TernCoreKit/c/tern.h>
#include <stdio.h>

int main(int count, char** words) {
  if (count < 3) {
    fprintf(stderr, "usage: ask_in_c FOLDER REQUEST...\n");
    return 2;
  }
  char* error = NULL;
  tern_venue* venue = tern_venue_open_folder(words[1], NULL, &error);
  if (!venue) {
    fprintf(stderr, "%s\n", error);
    tern_text_free(error);
    return 1;
  }
  for (int i = 2; i < count; ++i) {
    char* answer = tern_venue_answer(venue, words[i]);
    puts(answer);
    tern_text_free(answer);
  }
  tern_venue_close(venue, NULL);
  return 0;
}
