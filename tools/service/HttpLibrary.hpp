// The HTTP server library. Only files of this folder may include this.
#pragma once

// The packaged library is compiled with these, and its types look different without them.
#define CPPHTTPLIB_OPENSSL_SUPPORT
#define CPPHTTPLIB_ZLIB_SUPPORT
#define CPPHTTPLIB_BROTLI_SUPPORT
#include <httplib.h>
