#pragma once

#include <ostream>
#include <string>
#include <vector>

namespace stintbook {

/// Rows of text in aligned columns, as wide as a terminal shows them.
class Table {
public:
    enum class Alignment { left, right };
    struct Column {
        std::string heading;
        Alignment alignment = Alignment::left;
    };

    explicit Table(std::vector<Column> columns);
    /// As many cells as there are columns; control characters are shown as spaces.
    void add(std::vector<std::string> cells);
    bool isEmpty() const { return m_rows.empty(); }

    friend std::ostream& operator<<(std::ostream& stream, const Table& table);

private:
    std::vector<Column> m_columns;
    std::vector<std::vector<std::string>> m_rows;
};

/// How many terminal cells a text takes.
int displayWidth(std::string_view text);

/// At most `width` cells of a text; a cut one ends in "…".
std::string shownInCells(std::string_view text, int width);

} // namespace stintbook
