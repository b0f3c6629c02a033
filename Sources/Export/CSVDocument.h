#pragma once

#include <expected>
#include <string>
#include <string_view>
#include <vector>

#include "Export/ExportDelivery.h"
#include "Export/ExportDocumentModel.h"

namespace stintbook {

/// The cells of a document as a spreadsheet shows them, in its request's mode. Each row has as many as there are keys.
struct CSVTable {
    std::vector<std::string> keys;
    std::vector<std::vector<std::string>> rows;
};
CSVTable csvTable(const ExportDocumentModel& document);

/// The document as CSV in UTF-8, in its request's mode: a header row always, then a row a line or a row a
/// summary row, each ended by CR LF. Column keys, numbers and dates are the same in every locale; a column
/// stands or falls with its field, whatever the rows hold.
std::expected<std::string, ExportTextProblem> csvText(const ExportDocumentModel& document);

/// One cell as it is written. What a spreadsheet would evaluate gets an apostrophe in front; what would end
/// the cell or the row is quoted. Both look at user-perceived characters, so that a CR LF is one character,
/// which is neither a CR nor an LF and alone brings no quotes.
std::string csvCell(std::string_view text);

} // namespace stintbook
