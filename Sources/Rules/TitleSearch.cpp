#include "Rules/TitleSearch.h"

#include <algorithm>

namespace stintbook {

TitleSearch::Number TitleSearch::add(std::string_view text)
{
    Index node = root;
    for (const char byte : text) {
        Index next = child(node, byte);
        if (next == root) {
            next = static_cast<Index>(m_nodes.size());
            m_nodes.emplace_back();
            m_nodes[node].children.emplace_back(byte, next);
            if (node == root)
                m_rootChildren[static_cast<unsigned char>(byte)] = next;
        }
        node = next;
    }
    if (m_nodes[node].text == none)
        m_nodes[node].text = m_count++;
    return m_nodes[node].text;
}

void TitleSearch::prepare()
{
    // Breadth first, so that every suffix, being shorter, is complete before it is used.
    std::vector<Index> order{root};
    order.reserve(m_nodes.size());
    for (std::size_t i = 0; i < order.size(); ++i) {
        const Index node = order[i];
        for (const auto& [byte, next] : m_nodes[node].children) {
            const Index suffix = node == root ? root : step(m_nodes[node].suffix, byte);
            m_nodes[next].suffix = suffix;
            m_nodes[next].nextEnd =
                suffix == root || m_nodes[suffix].text != none ? suffix : m_nodes[suffix].nextEnd;
            order.push_back(next);
        }
    }
}

std::vector<TitleSearch::Number> TitleSearch::occurringIn(std::string_view title) const
{
    std::vector<Number> found;
    if (m_nodes[root].text != none)
        found.push_back(m_nodes[root].text);
    Index node = root;
    for (const char byte : title) {
        node = step(node, byte);
        for (Index end = node; end != root; end = m_nodes[end].nextEnd) {
            if (m_nodes[end].text != none)
                found.push_back(m_nodes[end].text);
        }
    }
    std::ranges::sort(found);
    const auto [first, last] = std::ranges::unique(found);
    found.erase(first, last);
    return found;
}

TitleSearch::Index TitleSearch::child(Index node, char byte) const
{
    if (node == root)
        return m_rootChildren[static_cast<unsigned char>(byte)];
    const auto& children = m_nodes[node].children;
    const auto found = std::ranges::find(children, byte, &std::pair<char, Index>::first);
    return found == children.end() ? root : found->second;
}

TitleSearch::Index TitleSearch::step(Index node, char byte) const
{
    while (true) {
        const Index next = child(node, byte);
        if (next != root || node == root)
            return next;
        node = m_nodes[node].suffix;
    }
}

} // namespace stintbook
