#include "encoder/Release.h"

#include "encoder/FfmpegText.h"

#include <cstdlib>
#include <sstream>

namespace fake {

namespace {

void replace(std::string& text, const std::string& from, const std::string& to) {
    const std::size_t at = text.find(from);
    if (at != std::string::npos)
        text.replace(at, from.size(), to);
}

std::string option(std::string name, const std::string& description) {
    name.resize(20, ' ');
    return name + description + "\n";
}

} // namespace

Release::Release(const std::string& text) {
    std::istringstream words(text);
    std::string word;
    if (!(words >> word))
        return;
    name_ = word;
    char* rest = nullptr;
    number_ = static_cast<int>(std::strtol(word.c_str(), &rest, 10)) * 10;
    if (*rest == '.')
        number_ += static_cast<int>(std::strtol(rest + 1, nullptr, 10));
    while (words >> word)
        hasX264_ &= word != "without-x264";
}

std::vector<std::string> Release::banner() const {
    std::vector<std::string> pieces = fake::banner();
    pieces[0] = "ffmpeg version " + name_ + " Copyright (c) 2000-2026 the FFmpeg developers\n";
    if (!hasX264_)
        replace(pieces[2], " --enable-libx264", "");
    return pieces;
}

std::string Release::longHelp() const {
    std::string text = "Hyper fast Audio and Video encoder\n"
                       "usage: ffmpeg [options] [[infile options] -i infile]... {[outfile options] "
                       "outfile}...\n\nAdvanced Video options:\n";
    const std::string psnr = "calculate PSNR of compressed frames";
    if (knowsQualityReport())
        text += option("-psnr", number_ < 60 ? psnr : psnr + " (deprecated, use -flags +psnr)");
    text += option("-vstats", "dump video coding statistics to file");
    if (number_ < 80)
        text += option("-qphist", number_ < 61 ? "show QP histogram" : "deprecated, does nothing");
    return text + option("-vtag fourcc/tag", "force video tag/fourcc") + "\n";
}

std::string Release::encoderHelp() const {
    return hasX264_ ? "Encoder libx264 [libx264 H.264 / AVC / MPEG-4 AVC / MPEG-4 part 10]:\n"
                      "    General capabilities: dr1 delay threads \n"
                    : "Codec 'libx264' is not recognized by FFmpeg.\n";
}

std::string Release::progressLine(const std::string& position) const {
    return inItsWords(fake::progressLine(position));
}

std::string Release::summaryLine(const std::string& position, bool quality) const {
    std::string line = fake::summaryLine(position);
    if (!quality || !printsQualityReport())
        replace(line, "LPSNR=Y:inf U:inf V:inf *:inf size=", "Lsize=");
    return inItsWords(line);
}

std::vector<std::string> Release::writeFailure(const std::string& reason) const {
    if (number_ < 61)
        return {"av_interleaved_write_frame(): " + reason + "\n",
                "Error writing trailer of the output: " + reason + "\n"};
    const std::string output = "[out#0/mp4 @ 0x557d755400c0] ";
    std::vector<std::string> pieces{
        "[vost#0:0/libx264 @ 0x557d75541a40] Error submitting a packet to the muxer: " + reason +
            "\n",
        output + "Error muxing a packet\n"};
    if (number_ >= 70) {
        pieces.push_back(output + "Task finished with error code: -28 (" + reason + ")\n");
        pieces.push_back(output + "Terminating thread with return code -28 (" + reason + ")\n");
    }
    pieces.push_back(output + "Error writing trailer: " + reason + "\n");
    return pieces;
}

std::string Release::inItsWords(std::string line) const {
    if (number_ >= 70)
        replace(line, "kB time=", "KiB time=");
    if (number_ >= 80)
        replace(line, "speed=2.25x", "speed=2.25x elapsed=0:00:03.21");
    return line;
}

} // namespace fake
