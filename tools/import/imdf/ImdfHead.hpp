// Where a site is, what it and its buildings are called, and in which language.
//
// Threads: free functions. Fails: by value.
#pragma once

#include <string>

#include "tools/import/draft/Draft.hpp"
#include "tools/import/imdf/ImdfFiles.hpp"

namespace tern::imports {

// The plane touches the globe amid the units, wherever a stray one lies. False where none has a
// place.
bool placeImdf(ImdfFiles& files, Draft& draft);

// `source` is what the files are called, for a venue without a name or an id.
void nameImdf(ImdfFiles& files, const std::string& source, Draft& draft);

}  // namespace tern::imports
