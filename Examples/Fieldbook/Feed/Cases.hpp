#pragma once

/// @file
/// Visiting variants, one callable for each case.

namespace fieldbook {

/// `std::visit(Cases{[](const Added&) { … }, [](const Removed&) { … }}, news)`
template <class... Callables> struct Cases : Callables... {
    using Callables::operator()...;
};
template <class... Callables> Cases(Callables...) -> Cases<Callables...>;

} // namespace fieldbook
