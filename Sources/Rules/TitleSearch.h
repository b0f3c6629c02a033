#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace stintbook {

/// Finds which of many texts occur in a title, in one walk over the title's bytes however many texts there
/// are (Aho–Corasick). Both sides are folded already. Immutable once built.
class TitleSearch {
public:
    using Number = std::uint32_t;

    TitleSearch() { m_nodes.emplace_back(); }

    /// The number of this text: a new one, or the one it was given before.
    Number add(std::string_view text);
    /// Called once, after the last text was added.
    void prepare();

    /// The numbers of the texts that occur in the title, each once, in no particular order. The empty text
    /// occurs in every title.
    std::vector<Number> occurringIn(std::string_view title) const;

private:
    using Index = std::uint32_t;
    static constexpr Index root = 0;
    static constexpr Number none = ~Number{0};

    /// Stands for a text's beginning; the root for the empty one.
    struct Node {
        std::vector<std::pair<char, Index>> children;
        /// The node of the longest proper suffix that is some text's beginning.
        Index suffix = root;
        /// The nearest node along the suffixes, this one aside, at which a text ends; the root if none.
        Index nextEnd = root;
        /// The text that ends here.
        Number text = none;
    };

    /// The root when the node has no such child.
    Index child(Index node, char byte) const;
    Index step(Index node, char byte) const;

    std::vector<Node> m_nodes;
    /// The root's children by byte: most steps start there.
    std::array<Index, 256> m_rootChildren{};
    Number m_count = 0;
};

} // namespace stintbook
