#include "convert/MovieForm.h"

#include <array>
#include <cstdint>
#include <string_view>

#include <unistd.h>

namespace {

// ffmpeg writes three before the index.
constexpr int mostBoxes = 16;

std::uint64_t number(const unsigned char* bytes, int length) {
    std::uint64_t result = 0;
    for (int each = 0; each < length; ++each)
        result = result << 8 | bytes[each];
    return result;
}

} // namespace

MovieForm movieForm(int descriptor, unsigned long long size) {
    std::uint64_t at = 0;
    for (int box = 0; at < size; ++box) {
        std::array<unsigned char, 16> head{};
        const ssize_t got = ::pread(descriptor, head.data(), head.size(), static_cast<off_t>(at));
        if (got < 0 || box == mostBoxes)
            return MovieForm::Other;
        const std::uint64_t rest = size - at;
        const std::string_view type(reinterpret_cast<const char*>(head.data()) + 4, 4);
        std::uint64_t length = number(head.data(), 4);
        // After a power failure a file may have its size and no content yet.
        if (box == 0 && length == 0 && number(head.data() + 4, 4) == 0)
            return MovieForm::Begun;
        if (box == 0 && type != "ftyp")
            return MovieForm::Other;
        if (rest < 8 || got < 8)
            return MovieForm::Begun; // cut in the middle of a head
        if (type == "moov")
            return MovieForm::Whole;
        if (type != "ftyp" && type != "free" && type != "wide" && type != "mdat")
            return MovieForm::Other;
        if (length == 0)
            return MovieForm::Begun; // until the end: its length is written last
        if (length == 1) {
            length = number(head.data() + 8, 8);
            if (length < 16)
                return MovieForm::Other;
        }
        if (length < 8)
            return MovieForm::Other;
        if (length > rest)
            return MovieForm::Begun;
        at += length;
    }
    return MovieForm::Begun;
}
