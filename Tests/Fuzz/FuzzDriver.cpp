// Drives a fuzz target without libFuzzer: replays every seed of a folder, then a bounded run of mutations of
// them. The mutation of a given number is always the same one, so that a failure can be repeated:
//
//     TraceReaderFuzz Tests/Fuzz/Corpus/TraceReader [count [first]]

#include <algorithm>
#include <array>
#include <csignal>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <string_view>
#include <vector>

#include <fmt/format.h>
#include <unistd.h>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace {

using Bytes = std::vector<std::uint8_t>;

constexpr std::uint64_t defaultCount = 20'000;
constexpr std::size_t longestInput = 65'536;

/// What runs just now, for the handler of a crash.
std::array<char, 64> s_current;

void sayWhatRan(int signal)
{
    const auto length = std::ranges::find(s_current, '\0') - s_current.begin();
    [[maybe_unused]] const auto written =
        write(STDERR_FILENO, s_current.data(), static_cast<std::size_t>(length));
    std::signal(signal, SIG_DFL);
    std::raise(signal);
}

void run(const Bytes& input, std::string_view kind, std::uint64_t number)
{
    *fmt::format_to_n(s_current.data(), s_current.size() - 1, "failed at {} {}\n", kind, number).out = '\0';
    LLVMFuzzerTestOneInput(input.data(), input.size());
}

class Mutator {
public:
    Mutator(const std::vector<Bytes>& seeds, std::uint64_t number)
        : m_seeds(seeds)
        , m_random(number)
    {
    }

    Bytes next()
    {
        Bytes bytes = m_seeds[below(m_seeds.size())];
        for (auto steps = 1 + below(6); steps > 0; --steps)
            mutate(bytes);
        bytes.resize(std::min(bytes.size(), longestInput));
        return bytes;
    }

private:
    std::size_t below(std::size_t bound) { return bound == 0 ? 0 : m_random() % bound; }
    auto anywhere(const Bytes& bytes) { return static_cast<std::ptrdiff_t>(below(bytes.size() + 1)); }

    void mutate(Bytes& bytes)
    {
        using namespace std::literals;
        static constexpr auto telling = "\0\n\r\t \"\\,;:.-+=@eE{}[]/#'0919\x7f\x80\xc3\xe2\xff"sv;
        const auto a = anywhere(bytes);
        const auto b = std::max(a, std::min(anywhere(bytes), a + 32));
        switch (below(6)) {
        case 0:
            if (!bytes.empty())
                bytes[below(bytes.size())] ^= static_cast<std::uint8_t>(1U << below(8));
            break;
        case 1:
            bytes.insert(bytes.begin() + a, static_cast<std::uint8_t>(telling[below(telling.size())]));
            break;
        case 2:
            bytes.erase(bytes.begin() + a, bytes.begin() + b);
            break;
        case 3: {
            const Bytes repeated(bytes.begin() + a, bytes.begin() + b);
            for (auto times = 1 + below(8); times > 0; --times)
                bytes.insert(bytes.begin() + b, repeated.begin(), repeated.end());
            break;
        }
        case 4: {
            const Bytes& other = m_seeds[below(m_seeds.size())];
            const auto from = anywhere(other);
            bytes.erase(bytes.begin() + a, bytes.end());
            bytes.insert(bytes.end(), other.begin() + from, other.end());
            break;
        }
        default:
            bytes.erase(bytes.begin() + a, bytes.end());
        }
    }

    const std::vector<Bytes>& m_seeds;
    std::mt19937_64 m_random;
};

std::vector<Bytes> seedsIn(const std::filesystem::path& folder)
{
    std::vector<std::filesystem::path> files;
    for (const auto& entry : std::filesystem::directory_iterator(folder)) {
        if (entry.is_regular_file())
            files.push_back(entry.path());
    }
    std::ranges::sort(files);

    std::vector<Bytes> seeds;
    for (const auto& file : files) {
        std::ifstream stream(file, std::ios::binary);
        seeds.emplace_back(std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>());
    }
    return seeds;
}

} // namespace

int main(int count, char** arguments)
{
    const auto seeds = count < 2 ? std::vector<Bytes>() : seedsIn(arguments[1]);
    if (seeds.empty()) {
        fmt::print(stderr, "usage: {} FOLDER-OF-SEEDS [COUNT [FIRST]]\n", arguments[0]);
        return EXIT_FAILURE;
    }
    for (const int signal : {SIGABRT, SIGSEGV, SIGFPE, SIGILL, SIGBUS, SIGTERM})
        std::signal(signal, sayWhatRan);

    for (std::size_t index = 0; index < seeds.size(); ++index)
        run(seeds[index], "seed", index);

    const auto mutations = count > 2 ? std::strtoull(arguments[2], nullptr, 10) : defaultCount;
    const auto first = count > 3 ? std::strtoull(arguments[3], nullptr, 10) : 0;
    for (auto number = first; number < first + mutations; ++number)
        run(Mutator(seeds, number).next(), "mutation", number);

    fmt::print("{} seeds and {} mutations\n", seeds.size(), mutations);
    return EXIT_SUCCESS;
}
