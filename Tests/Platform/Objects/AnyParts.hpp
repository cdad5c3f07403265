#pragma once

/// @file
/// Values and classes of an application, to be held.

#include <cstddef>
#include <functional>
#include <string>

namespace app {

struct Point {
    int x = 0;
    friend bool operator==(const Point&, const Point&) = default;
};

enum class Colour { Red, Green };

class Shape {
public:
    virtual ~Shape() = default;
};
class Coloured {
public:
    virtual ~Coloured() = default;
    Colour colour = Colour::Green;
};
class Circle : public Shape, public Coloured {
public:
    std::string description() const { return "a circle"; }
};

} // namespace app

template <> struct std::hash<app::Point> {
    std::size_t operator()(const app::Point& point) const { return static_cast<std::size_t>(point.x) + 100; }
};
