#include "command/TextFile.h"

#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <iterator>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace Orbita {

namespace {

constexpr std::uintmax_t maximumSize = 1024 * 1024;

bool writeAll(int file, std::string_view text)
{
    while (!text.empty()) {
        const ssize_t written = TEMP_FAILURE_RETRY(write(file, text.data(), text.size()));
        if (written <= 0)
            return false;
        text.remove_prefix(std::size_t(written));
    }
    return fsync(file) == 0;
}

/// The mode for a file in the place of \a path: that of the one there, else that of a file which is no secret.
mode_t modeFor(const char *path)
{
    struct stat status = {};
    return ::stat(path, &status) == 0 ? status.st_mode & 0777 : 0644;
}

} // namespace

std::optional<std::string> readTextFile(const std::filesystem::path &path)
{
    std::error_code error;
    const auto status = std::filesystem::status(path, error);
    if (status.type() == std::filesystem::file_type::not_found)
        return std::string();
    if (!std::filesystem::is_regular_file(status) || std::filesystem::file_size(path, error) > maximumSize)
        return std::nullopt;
    std::ifstream stream(path, std::ios::binary);
    std::string text(std::istreambuf_iterator<char>(stream), {});
    return stream ? std::optional(std::move(text)) : std::nullopt;
}

bool writeTextFile(const std::filesystem::path &path, std::string_view text)
{
    std::error_code error;
    const auto target = std::filesystem::weakly_canonical(path, error);
    if (error)
        return false;
    std::filesystem::create_directories(target.parent_path(), error);
    std::string temporary = target.native() + ".XXXXXX";
    const int file = mkostemp(temporary.data(), O_CLOEXEC);
    if (file < 0)
        return false;
    // mkostemp() makes a file for its user alone.
    const bool isWritten = fchmod(file, modeFor(target.c_str())) == 0 && writeAll(file, text);
    if (close(file) == 0 && isWritten && rename(temporary.c_str(), target.c_str()) == 0)
        return true;
    unlink(temporary.c_str());
    return false;
}

} // namespace Orbita
