#include "launcher/FileList.h"

#include "system/Descriptor.h"

#include <algorithm>
#include <cerrno>

#include <fcntl.h>
#include <sys/stat.h>

namespace {

constexpr std::size_t firstLook = 4096;
constexpr std::size_t tagHeader = 10;

char lower(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

bool containsAnyCase(std::string_view text, std::string_view word) {
    return std::search(text.begin(), text.end(), word.begin(), word.end(),
                       [](char one, char other) { return lower(one) == lower(other); }) !=
           text.end();
}

/// Length of the ID3 tag that the text begins with, 0 without one.
std::size_t tagLength(std::string_view text) {
    if (text.size() < tagHeader || !text.starts_with("ID3"))
        return 0;
    std::size_t length = 0;
    for (std::size_t i = 6; i < tagHeader; ++i)
        length = (length << 7U) | (static_cast<unsigned char>(text[i]) & 0x7fU);
    const bool hasFooter = (static_cast<unsigned char>(text[5]) & 0x10U) != 0;
    return length + tagHeader * (hasFooter ? 2 : 1);
}

bool readMore(int file, std::string& text, std::size_t length) {
    const std::size_t before = text.size();
    text.resize(length);
    std::size_t filled = before;
    while (filled < length) {
        const ssize_t got = ::read(file, text.data() + filled, length - filled);
        if (got < 0 && errno == EINTR)
            continue;
        if (got <= 0)
            break;
        filled += static_cast<std::size_t>(got);
    }
    text.resize(filled);
    return filled > before;
}

} // namespace

bool isListOfFiles(std::string_view beginning) {
    std::string_view text = beginning;
    // ffmpeg judges by what stands behind the tag.
    for (std::size_t tag = tagLength(text); tag > 0; tag = tagLength(text))
        text.remove_prefix(std::min(tag, text.size()));
    if (text.starts_with("ffconcat version 1.0") || text.starts_with("#EXTM3U"))
        return true;
    const std::string_view words = text.substr(0, text.find('\0'));
    return containsAnyCase(words, "<MPD") || containsAnyCase(words, "<CompositionPlaylist");
}

bool namesOtherFiles(const std::string& path) {
    // What is no ordinary file may never answer.
    const Descriptor file(::open(path.c_str(), O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC));
    struct stat facts {};
    if (!file.isOpen() || ::fstat(file.number(), &facts) != 0 || !S_ISREG(facts.st_mode))
        return false;
    std::string text;
    readMore(file.number(), text, firstLook);
    // A movie's first bytes hold a zero: nothing more of it is read.
    if (text.find('\0') == std::string::npos || text.starts_with("ID3"))
        readMore(file.number(), text, decidingLength);
    return isListOfFiles(text);
}
