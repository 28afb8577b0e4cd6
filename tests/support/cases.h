// A table of cases, each a row of values: for (const auto& [text, value] : Cases<const char*,
// int>{...}).
#pragma once

#include <initializer_list>
#include <tuple>

namespace ferrowand {

template <typename... Columns>
using Cases = std::initializer_list<std::tuple<Columns...>>;

}  // namespace ferrowand
