#include <gmock/gmock.h>

#include "Rules/TitleSearch.h"
#include "Support/RandomWork.h"

namespace stintbook {
namespace {

TEST(TitleSearch, AgreesWithSearchingForOneTextAfterTheOther)
{
    for (unsigned seed = 1; seed <= 200; ++seed) {
        RandomWork work(seed);
        const auto text = [&](std::size_t length) {
            std::string result;
            while (result.size() < length)
                result += static_cast<char>(work.oneIn(3) ? '\xC3' : 'a' + static_cast<char>(work.below(2)));
            return result;
        };
        TitleSearch search;
        std::vector<std::string> texts;
        for (int i = 0; i < 12; ++i) {
            const auto candidate = text(work.below(6));
            if (search.add(candidate) == texts.size())
                texts.push_back(candidate);
        }
        search.prepare();
        const auto title = text(work.below(30));
        std::vector<TitleSearch::Number> expected;
        for (TitleSearch::Number i = 0; i < texts.size(); ++i) {
            if (title.contains(texts[i]))
                expected.push_back(i);
        }
        EXPECT_THAT(search.occurringIn(title), testing::UnorderedElementsAreArray(expected))
            << "seed " << seed;
    }
}

} // namespace
} // namespace stintbook
