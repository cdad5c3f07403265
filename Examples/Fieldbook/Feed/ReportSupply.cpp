#include "Feed/ReportSupply.hpp"

#include <cstddef>
#include <set>
#include <utility>

namespace fieldbook {

ReportSupply::ReportSupply(std::string_view prefix, const std::map<std::string, Report>& remembered)
    : m_prefix(prefix)
{
    for (const auto& [name, report] : remembered)
        if (name.starts_with(prefix))
            m_known.emplace(name, report);
}

std::vector<FeedNews> ReportSupply::take(const std::vector<std::optional<Report>>& list)
{
    std::vector<FeedNews> news;
    std::set<std::string> names;
    for (std::size_t index = 0; index < list.size(); ++index) {
        const auto name = std::string(m_prefix) + std::to_string(index + 1);
        names.insert(name);
        const auto before = m_known.find(name);
        if (!list[index] || (before != m_known.end() && before->second == *list[index]))
            continue;
        if (before == m_known.end())
            news.emplace_back(Added{name, *list[index]});
        else
            news.emplace_back(Changed{name, *list[index]});
        m_known.insert_or_assign(name, *list[index]);
    }
    for (auto each = m_known.begin(); each != m_known.end();) {
        if (names.contains(each->first)) {
            ++each;
            continue;
        }
        news.emplace_back(Removed{each->first, std::move(each->second)});
        each = m_known.erase(each);
    }
    return news;
}

} // namespace fieldbook
