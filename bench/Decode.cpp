#include "bench/Bench.hpp"
namespace tern::bench { void benchDecode() {} }
