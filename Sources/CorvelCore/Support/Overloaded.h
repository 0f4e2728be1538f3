// Overloaded: one visitor made of several lambdas, one per case of a variant:
// std::visit(Overloaded{[](const A&) {...}, [](const B&) {...}}, value).
#pragma once

namespace corvel {

template <class... Cases>
struct Overloaded : Cases... {
  using Cases::operator()...;
};
// Spelled out for compilers that do not deduce aggregates' arguments (Clang 16).
template <class... Cases>
Overloaded(Cases...) -> Overloaded<Cases...>;

}  // namespace corvel
