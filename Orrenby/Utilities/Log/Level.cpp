#include "Orrenby/Utilities/Log/Level.hpp"

#include <array>
#include <cstddef>

namespace orrenby::inline ORRENBY_ABI::Log {

namespace {

struct Texts {
    std::string_view description;
    std::string_view code;
    std::string_view emoji;
};

// In the order of the raw values. U+FE0F asks for the coloured form of a sign that has a plain one as well.
constexpr std::array<Texts, 6> texts{{
    {"Debug", "D", "\U0001F518"},
    {"Info", "I", "\U0001F537"},
    {"Event", "U", "\u2747\uFE0F"},
    {"Warning", "W", "\u26A0\uFE0F"},
    {"Error", "E", "\u26D4\uFE0F"},
    {"Critical", "C", "\U0001F47F"},
}};

const Texts& textsOf(Level level) { return texts[static_cast<std::size_t>(level.rawValue())]; }

} // namespace

std::string_view Level::description() const noexcept { return textsOf(*this).description; }

std::string_view Level::code() const noexcept { return textsOf(*this).code; }

std::string_view Level::emoji() const noexcept { return textsOf(*this).emoji; }

} // namespace orrenby::Log
