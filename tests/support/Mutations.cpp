#include "tests/support/Mutations.hpp"

#include <limits>
#include <string>
#include <utility>
#include <vector>

#include "tests/support/ValuePlaces.hpp"

namespace tern::test {

void Mutations::damage(Value& document, int places) {
  for (int i = 0; i < places; ++i) {
    std::size_t n = below(countValues(document));
    damageOne(*nthValue(document, n));
  }
}

void Mutations::damageOne(Value& value) {
  if (value.isMap() && value.size() > 0 && below(2) == 0) return damageMap(value);
  if (value.isList() && value.size() > 0 && below(2) == 0) return damageList(value);
  value = absurd();
}

void Mutations::damageMap(Value& map) {
  const std::size_t victim = below(map.size());
  switch (below(3)) {
    case 0: {  // a key is missing
      Value rest = Value::map();
      for (std::size_t i = 0; i < map.size(); ++i) {
        if (i != victim) rest.set(map.entries()[i].key.text(), map.entries()[i].value);
      }
      map = std::move(rest);
      break;
    }
    case 1:  // a key that nobody knows
      map.set("unheardOf", absurd());
      break;
    default:  // a value that belongs under another key
      map.entries()[victim].value = map.entries()[below(map.size())].value;
  }
}

void Mutations::damageList(Value& list) {
  const Value victim = list.items()[below(list.size())];
  switch (below(4)) {
    case 0:  // an element comes twice
      list.append(victim);
      break;
    case 1:  // elements are missing at the end
      list = Value::list({victim});
      break;
    case 2:  // an element is something else
      list.items()[below(list.size())] = absurd();
      break;
    default:  // far too many elements
      for (int i = 0; i < 3'000; ++i) list.append(i % 2 == 0 ? victim : Value(i));
  }
}

Value Mutations::absurd() {
  constexpr std::int64_t largest = std::numeric_limits<std::int64_t>::max();
  const std::vector<Value> values = {Value(),
                                     nullptr,
                                     true,
                                     false,
                                     0,
                                     -1,
                                     -largest - 1,
                                     largest,
                                     4294967296,
                                     0.5,
                                     1e308,
                                     -1e308,
                                     5e-324,
                                     "",
                                     "not a number",
                                     std::string(5000, 'x'),
                                     Value::list(),
                                     Value::map(),
                                     Value::list({nullptr, "a", -1}),
                                     Value::map({{"id", -1}, {"items", 7}}),
                                     Value::list({1e308, -1e308})};
  return values[below(values.size())];
}

}  // namespace tern::test
