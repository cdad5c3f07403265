#pragma once

/// @file
/// Reports as cards of several lines, in the kind that suits each.

#include "Feed/Catalogue.hpp"
#include "Orrenby/Platform/Objects/Ref.hpp"
#include "Orrenby/Utilities/Discover/PluginList.hpp"
#include "Terminal/Terminal.hpp"
#include <string>
#include <vector>

namespace fieldbook {

/// How a card is drawn.
struct CardStyle {
    const Terminal* terminal = nullptr; ///< Outlives the cards.
    bool isDetailed = true;             ///< Whether the text of the report is shown.
};

/// Draws reports of one kind.
///
///     | #1 low     Wasps in the information board
///     | Harrow Gate, by Jonas Brandt
///     | A nest behind the map.
///
/// What can be followed, called or visited is underlined, and what stands in square brackets in the text of
/// the report is bold, see Caption.hpp.
class Card {
public:
    explicit Card(CardStyle style)
        : m_style(style)
    {}
    Card(const Card&) = delete;
    Card& operator=(const Card&) = delete;
    virtual ~Card() = default;

    std::vector<std::string> lines(const NumberedReport& report) const;

protected:
    const Terminal& terminal() const { return *m_style.terminal; }

private:
    /// What stands below the title because the card is of this kind. Empty for none.
    virtual std::string note(const Report& report) const;

    CardStyle m_style;
};

/// The kinds of cards, the most particular first: alerts for what is grave, counts for what was counted,
/// plain ones for everything else. To add a kind, add a plugin.
class Cards : public orrenby::PluginList<CardStyle, orrenby::Ref<Card>, Report> {
public:
    using PluginList::PluginList;

    Plugins plugins(const CardStyle& style) const override;
};

} // namespace fieldbook
