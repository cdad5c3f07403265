#pragma once

/// @file
/// Fonts.

#include "Orrenby/Platform/Export.hpp"
#include <cstddef>
#include <optional>
#include <string>

namespace orrenby::inline ORRENBY_ABI {

/// What a font is made from.
struct FontOptions {
    /// Of the family; "System" stands for what the place of drawing likes best.
    std::string name = "System";
    /// In points.
    double size = 17;
    /// How high a capital letter without curves stands above the line, in points. Seven tenths of the size,
    /// which most families are close to, when it is not given.
    std::optional<double> capHeight = std::nullopt;
    bool isBold = false;       ///< Drawn with heavier strokes.
    bool isItalic = false;     ///< Slanted.
    bool isMonospaced = false; ///< All characters are equally wide.
};

/// Names a font and knows the few measures that a text is laid out by.
///
/// It is no file of outlines, and nobody looks whether there is one of that name. Any numbers are accepted.
///
/// @snippet Tests/Platform/Drawing/FontTests.cpp Choosing a font
///
/// A plain value. Not synchronised.
class ORRENBY_EXPORT Font {
public:
    /// Takes the numbers as they are; nobody looks whether there is such a font.
    explicit Font(FontOptions options = {});

    /// The font of the system.
    static Font system(double size) { return Font({.size = size}); }

    /// The font of the system in bold.
    static Font boldSystem(double size) { return Font({.size = size, .isBold = true}); }

    /// What the options said; without a cap height, what follows from the size. Sizes are in points.
    const std::string& name() const noexcept { return m_name; }
    double size() const noexcept { return m_size; }
    double capHeight() const noexcept { return m_capHeight; }
    bool isBold() const noexcept { return m_isBold; }
    bool isItalic() const noexcept { return m_isItalic; }
    bool isMonospaced() const noexcept { return m_isMonospaced; }

    /// The same font in another size; its capital letters grow alike. Of a font of size 0 they are as high as
    /// those of a new font of that name.
    Font withSize(double size) const;
    /// The same font of that weight or slope; the measures stay.
    Font bold(bool isBold = true) const;
    Font italic(bool isItalic = true) const;

    /// `Helvetica 17.0 bold italic`
    std::string description() const;
    std::string debugDescription() const { return "Font(" + description() + ")"; }
    std::size_t hash() const noexcept;

    friend bool operator==(const Font&, const Font&) = default;

private:
    std::string m_name;
    double m_size;
    double m_capHeight;
    bool m_isBold;
    bool m_isItalic;
    bool m_isMonospaced;
};

} // namespace orrenby

template <> struct std::hash<orrenby::Font> {
    std::size_t operator()(const orrenby::Font& font) const noexcept { return font.hash(); }
};
