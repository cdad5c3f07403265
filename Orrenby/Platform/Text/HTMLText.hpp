#pragma once

/// @file
/// Texts with attributes as HTML.

#include "Orrenby/Platform/Export.hpp"
#include "Orrenby/Platform/Text/NSAttributedString.hpp"
#include <string>
#include <vector>

namespace orrenby::inline ORRENBY_ABI {

/// How a text becomes HTML.
struct HTMLTextOptions {
    /// Links of these schemes can be followed, whatever the case of their letters. All others, relative ones
    /// included, become text: what "javascript:" refers to would run in the page. The page has to trust each
    /// scheme that is added.
    std::vector<std::string> linkSchemes = {"http", "https", "mailto", "tel"};
    /// What is read out in place of an image, and stands for one that is neither PNG nor JPEG.
    std::string attachmentText = "[image]";
};

/// The text as HTML that can stand within a paragraph: `Read <a href="https://hut.example/">this</a>`.
///
/// Nothing of the text becomes markup. It is escaped, font names too; control characters become U+FFFD; each
/// line end, in any of its forms, becomes `<br>`. Only the elements `a`, `span`, `img` and `br` occur, each
/// closed before the end. Whether blanks in a row are kept is for the style of the page to say, and so is
/// what marks of writing direction do beyond the text.
///
/// Colours, fonts (a point is a pixel), lines under and through the text become styles; an attachment becomes
/// an image whose bytes stand in its address; whatever else the attributes hold is left out, and so are
/// numbers that are not finite.
///
/// @snippet Tests/Platform/Text/HTMLTextTests.cpp Writing HTML
///
/// Linear in the text and its images. Safe to use from several threads.
ORRENBY_EXPORT std::string htmlText(const NSAttributedString& text, const HTMLTextOptions& options = {});

/// A text as it stands between the tags of HTML, or between the quotes of an attribute's value: `&`, `<`,
/// `>`, `"` and `'` are written as references, control characters but tabs and line ends as U+FFFD, and so is
/// what is no UTF-8. Linear.
ORRENBY_EXPORT std::string escapedHTML(std::string_view text);

} // namespace orrenby
