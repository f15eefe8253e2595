// Loaded into the program under test ahead of libcanberra: a sound server that never answers.

#include <unistd.h>

extern "C" int ca_context_play(void* /*context*/, unsigned /*id*/, ...) {
  for (;;) ::pause();
}
