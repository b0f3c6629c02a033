#pragma once

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <stdexcept>
#include <string>
#include <system_error>

namespace stintbook {

/// A directory of a test's own, gone with it; in memory where the system has a place for that, so that a
/// hundred stores do not wait for a disk.
class TemporaryDirectory {
public:
    TemporaryDirectory()
    {
        const std::filesystem::path memory = "/dev/shm";
        const auto place =
            std::filesystem::is_directory(memory) ? memory : std::filesystem::temp_directory_path();
        auto name = (place / "velloran-test-XXXXXX").string();
        if (mkdtemp(name.data()) == nullptr)
            throw std::runtime_error("no temporary directory could be made");
        m_path = std::filesystem::canonical(name);
    }
    ~TemporaryDirectory()
    {
        std::error_code ignored;
        std::filesystem::remove_all(m_path, ignored);
    }
    TemporaryDirectory(const TemporaryDirectory&) = delete;
    TemporaryDirectory& operator=(const TemporaryDirectory&) = delete;

    const std::filesystem::path& path() const { return m_path; }
    std::filesystem::path operator/(const std::filesystem::path& name) const { return m_path / name; }

private:
    std::filesystem::path m_path;
};

inline std::string contentsOf(const std::filesystem::path& file)
{
    std::ifstream stream(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

inline void writeFile(const std::filesystem::path& file, std::string_view contents)
{
    std::ofstream(file, std::ios::binary)
        .write(contents.data(), static_cast<std::streamsize>(contents.size()));
}

/// The regular files of a directory with every byte of theirs.
inline std::map<std::string, std::string> filesIn(const std::filesystem::path& directory)
{
    std::map<std::string, std::string> files;
    for (const auto& entry : std::filesystem::directory_iterator(directory)) {
        if (entry.is_regular_file())
            files.emplace(entry.path().filename().string(), contentsOf(entry.path()));
    }
    return files;
}

} // namespace stintbook
