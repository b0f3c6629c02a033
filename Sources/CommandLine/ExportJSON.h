#pragma once

#include <vector>

#include "App/ExportDesk.h"
#include "Base/Json.h"

namespace stintbook {

/// The members of `export preview`.
void writeMembers(JsonWriter& json, const ExportPreview& preview);
/// {"snapshots":[…]}, the member alone.
void writeSnapshots(JsonWriter& json, const std::vector<ExportSnapshot>& snapshots);
void writeMembers(JsonWriter& json, const ExportReceipt& receipt);

} // namespace stintbook
