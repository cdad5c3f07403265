#pragma once

/// @file
/// Texts with attributes out of texts with brackets, and the sum of two.

#include "Orrenby/Platform/Drawing/Color.hpp"
#include "Orrenby/Platform/Drawing/Font.hpp"
#include "Orrenby/Platform/Drawing/Image.hpp"
#include "Orrenby/Platform/Export.hpp"
#include "Orrenby/Platform/Net/URL.hpp"
#include "Orrenby/Platform/Text/NSAttributedString.hpp"
#include "Orrenby/Platform/Text/TextAttributes.hpp"
#include <optional>
#include <string_view>
#include <vector>

namespace orrenby::inline ORRENBY_ABI {

/// How a text with stretches in square brackets becomes one with attributes.
struct EmphasisMarkup {
    /// Of what stands outside of brackets.
    TextAttributes normalAttributes{};
    /// Of what stands inside.
    TextAttributes markdownAttributes{};
};

/// How a text with images in place of square brackets becomes one with attributes.
struct ImageMarkup {
    /// Of the text; its font says where the images stand.
    TextAttributes normalAttributes{};
    /// In the order of the brackets.
    std::vector<Image> images{};
};

/// How a text with links becomes one with attributes.
struct LinkMarkup {
    /// Of what is no link.
    TextAttributes normalAttributes{};
    /// Of links.
    TextAttributes linkAttributes{};
    /// In the order of the placeholders.
    std::vector<URL> links{};
};

/// The text with what stands in square brackets in attributes of its own, and without the brackets:
/// "Ring [now]!" with `now` in `markdownAttributes`.
///
/// A bracket opens at the first "[" and closes at the next "]" on the same line; "[]" is dropped, and what
/// has no partner stays. In "[[a]" the inner text is "[a". First each "%%" becomes "%"; there is no other way
/// to write a bracket that is none than to leave its partner out.
///
/// @snippet Tests/Foundation/NSAttributedStringTests.cpp Emphasising
///
/// What is no UTF-8 becomes U+FFFD. Nothing when a bracket holds more than 2^31 UTF-16 units. Linear in the
/// text. Safe to use from several threads.
ORRENBY_EXPORT std::optional<NSAttributedString> makeAttributedString(
    std::string_view text, const EmphasisMarkup& markup);

/// The text with an image in place of each pair of square brackets and of what stands in it: the first image
/// for the first pair, and so on.
///
/// Each image keeps its size and stands in the middle of the capital letters of the font: its lower side is
/// at `round(round(capHeight - height) * 0.5)`. Without a font among the attributes the height of capitals is
/// 0. An image has no other attributes than being one.
///
/// With fewer images than pairs the other pairs vanish, too; further images are left out. First each "%%"
/// becomes "%", and brackets are found as above.
///
/// @snippet Tests/Foundation/NSAttributedStringTests.cpp Placing images
///
/// Linear in the text. Safe to use from several threads.
ORRENBY_EXPORT std::optional<NSAttributedString> makeAttributedString(
    std::string_view text, const ImageMarkup& markup);

/// The text with links in place of "[visible text](target)".
///
/// First each "%@" becomes the text of the next URL, so that a translated text does not hold addresses: "[the
/// rules](%@)". Without a further URL it becomes "(null)", surplus URLs are left out; "%%" becomes "%", every
/// other "%" stays. Then each link shows the text in its square brackets in `linkAttributes`, together with a
/// link to its target, which takes the place of one given there; a target that is no URL makes for no link
/// at all, but the look stays.
///
/// The target ends at the first ")": a URL that has one itself is cut there. What stands between a "[" and
/// the next "](" on its line is visible text, brackets included.
///
/// @snippet Tests/Foundation/NSAttributedStringTests.cpp Linking
///
/// Linear in the text and the links. Safe to use from several threads.
ORRENBY_EXPORT std::optional<NSAttributedString> makeAttributedString(
    std::string_view text, const LinkMarkup& markup);

/// The text in that colour and font, and with no other attributes.
///
/// @snippet Tests/Foundation/NSAttributedStringTests.cpp Adding texts
ORRENBY_EXPORT NSAttributedString attr(std::string_view text, const Color& color, const Font& font);

/// The one text with the other behind it, each with its own attributes.
///
/// @snippet Tests/Foundation/NSAttributedStringTests.cpp Adding texts
///
/// Linear in both. For many pieces `NSMutableAttributedString::append` is cheaper.
ORRENBY_EXPORT NSAttributedString operator+(const NSAttributedString& left, const NSAttributedString& right);

} // namespace orrenby
