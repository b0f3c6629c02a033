// Whatever stands in a store's file: it is opened and read, or refused with a sentence and not a byte of it
// changed nor anything left beside it.

#include <cstddef>
#include <cstdint>
#include <string>

#include "Base/Log.h"
#include "Require.h"
#include "Store/PersistentActivitySegmentRepository.h"
#include "Store/PersistentReviewStore.h"
#include "Store/StoreCheck.h"
#include "Store/StoreInformation.h"
#include "Support/TemporaryDirectory.h"

namespace {

using namespace stintbook;

/// Every record is given back or refused by name; nothing is made of the answers.
void readEverything(const std::shared_ptr<StoreDatabase>& database)
{
    const auto said = [](const auto& read) { require(read || !message(read.error()).empty()); };
    const PersistentActivitySegmentRepository recorded(database);
    const PersistentReviewStore reviewed(database);
    constexpr Interval allTime{{-1e12}, {1e12}};
    said(recorded.segments(allTime));
    said(recorded.observedApplications());
    said(reviewed.items(allTime));
    said(reviewed.reviewedDays({}));
    said(reviewed.referenceCensus());
    said(reviewed.billing());
    said(reviewed.snapshots());
    said(reviewed.exportedDays());
    said(storeInformation(*database));
    said(checkStore(*database, [](const StoreFinding& finding) { require(!message(finding).empty()); }));
}

/// The copy that a migration of these contents keeps.
std::string backupName(const std::string& contents)
{
    constexpr std::size_t lowByteOfUserVersion = 63;
    return "Velloran.store.v" + std::to_string(static_cast<int>(contents.at(lowByteOfUserVersion)))
        + "-backup";
}

/// As long as its header says, so that what was inserted or cut out does not end the matter at once.
std::string withItsLengthPutRight(std::string contents)
{
    constexpr std::size_t header = 100;
    constexpr std::size_t longest = 1 << 20;
    if (contents.size() < header)
        return contents;
    const auto byte = [&](std::size_t at) {
        return static_cast<std::size_t>(static_cast<unsigned char>(contents[at]));
    };
    const auto length = (byte(16) << 8U | byte(17)) * (byte(30) << 8U | byte(31));
    if (length > 0 && length < longest)
        contents.resize(length);
    return contents;
}

void openStoreOf(const std::string& contents)
{
    const TemporaryDirectory directory;
    const auto file = directory / "Velloran.store";
    writeFile(file, contents);

    auto database = StoreDatabase::open({.file = file, .role = StoreRole::guest});
    if (database) {
        readEverything(*database);
        database->reset();
        // Reading changes nothing but by a migration.
        require(contentsOf(file) == contents
                || std::filesystem::exists(file.parent_path() / backupName(contents)));
        return;
    }
    require(!message(database.error()).empty());
    require(contentsOf(file) == contents);
    // A migration that met damage has left its lock and its copy.
    const auto left = filesIn(directory.path());
    require(left.size() == 1 || left.contains("Velloran.store.lock"));
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    [[maybe_unused]] static const auto former = log::replaceSink([](log::Level, std::string_view) { });
    const std::string contents(data, data + size);
    openStoreOf(contents);
    openStoreOf(withItsLengthPutRight(contents));
    return 0;
}
