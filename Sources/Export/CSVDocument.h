#pragma once

#include <expected>
#include <string>
#include <string_view>

#include "Export/ExportDelivery.h"
#include "Export/ExportDocumentModel.h"

namespace stintbook {

/// The document as CSV in UTF-8, in its request's mode: a header row always, then a row a line or a row a
/// summary row, each ended by CR LF. Column keys, numbers and dates are the same in every locale; a column
/// stands or falls with its field, whatever the rows hold.
std::expected<std::string, ExportTextProblem> csvText(const ExportDocumentModel& document);

/// One cell as it is written. What a spreadsheet would evaluate gets an apostrophe in front; what would end
/// the cell or the row is quoted. Both look at user-perceived characters, so that a CR LF is one character,
/// which is neither a CR nor an LF and alone brings no quotes.
std::string csvCell(std::string_view text);

} // namespace stintbook
