#include "Export/ExportDelivery.h"

namespace stintbook {

namespace {

std::string sentences(const std::string& reason, std::string_view consequence)
{
    return reason.empty() ? std::string(consequence) : reason + " " + std::string(consequence);
}

std::string body(const DeliveryNotProduced& failure)
{
    return sentences(failure.reason, "Nothing was written, and no record was created.");
}

std::string body(const DeliveredButNotRecorded& failure)
{
    return sentences(failure.reason,
                     "The file was produced, but the export could not be recorded on this computer. "
                     "Your reviewed work and export choices are still available.");
}

std::string body(const ExportCancelled&)
{
    return {};
}

} // namespace

std::string message(ExportTextProblem problem)
{
    switch (problem) {
    case ExportTextProblem::notEncodable:
        return "The export text could not be encoded.";
    case ExportTextProblem::pasteboardRefused:
        return "The summary could not be placed on the pasteboard.";
    }
    return {};
}

std::string title(const ExportFailure& failure, ExportFormat format)
{
    if (std::holds_alternative<ExportCancelled>(failure))
        return {};
    if (std::holds_alternative<DeliveredButNotRecorded>(failure))
        return "The export was not recorded";
    return format == ExportFormat::copySummary ? "The export could not be completed."
                                               : "The export could not be saved";
}

std::string message(const ExportFailure& failure)
{
    return std::visit([](const auto& what) { return body(what); }, failure);
}

} // namespace stintbook
