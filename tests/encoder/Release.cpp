#include "encoder/Release.h"

#include "encoder/FfmpegText.h"

#include <cstdlib>
#include <sstream>

namespace fake {

namespace {

const std::string muxer = "[out#0/mp4 @ 0x557d755400c0] ";
const std::string decoder = "[hevc @ 0x557d755411c0] ";

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
    std::string text = usage() + "\nAdvanced Video options:\n";
    const std::string psnr = "calculate PSNR of compressed frames";
    if (knowsQualityReport())
        text += option("-psnr", number_ < 60 ? psnr : psnr + " (deprecated, use -flags +psnr)");
    text += option("-vstats", "dump video coding statistics to file");
    if (number_ < 80)
        text += option("-qphist", number_ < 61 ? "show QP histogram" : "deprecated, does nothing");
    const std::string tag = number_ < 70 ? "-vtag fourcc/tag" : "-vtag <fourcc/tag>";
    return text + option(tag, "force video tag/fourcc") + "\n";
}

std::string Release::encoderHelp() const {
    return hasX264_ ? "Encoder libx264 [libx264 H.264 / AVC / MPEG-4 AVC / MPEG-4 part 10]:\n"
                      "    General capabilities: dr1 delay threads \n"
                    : "Codec 'libx264' is not recognized by FFmpeg.\n";
}

std::string Release::usage() const {
    std::string text = fake::usage();
    if (number_ >= 70)
        replace(text, "Hyper fast Audio and Video encoder", "Universal media converter");
    return text;
}

std::string Release::firstReport() const {
    return number_ < 70 ? std::string()
                        : inItsWords("frame=    0 fps=0.0 q=0.0 size=       0kB time=N/A "
                                     "bitrate=N/A speed=N/A    \r");
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

std::vector<std::string> Release::ending(const std::string& position, bool quality) const {
    std::vector<std::string> pieces{summaryLine(position, quality)};
    if (number_ < 61)
        pieces.push_back(totals());
    else
        pieces.insert(pieces.begin(), muxer + inItsWords(totals()));
    const bool hasQuality = quality && printsQualityReport();
    for (const std::string& each : encoderStatistics(hasQuality))
        pieces.push_back(each);
    return pieces;
}

std::vector<std::string> Release::damage() const {
    std::vector<std::string> pieces{decoder + "Invalid NAL unit size (69857108 > 505).\n",
                                    decoder + "Error splitting the input into NAL units.\n"};
    if (number_ < 61) {
        pieces.push_back("Error while decoding stream #0:0: Invalid data found when processing "
                         "input\n");
    } else {
        pieces.push_back("[vist#0:0/hevc @ 0x557d75541a40] [dec:hevc @ 0x557d75541b40] Error "
                         "submitting packet to decoder: Invalid data found when processing "
                         "input\n");
    }
    pieces.push_back(decoder + "Could not find ref with POC 11\n");
    if (number_ >= 80) {
        pieces.push_back(decoder + "Error constructing the frame RPS.\n");
        pieces.push_back(decoder + "Skipping invalid undecodable NALU: 1\n");
    }
    return pieces;
}

std::vector<std::string> Release::unusableSource(const std::string& path,
                                                 const std::string& reason) const {
    if (number_ < 61)
        return {path + ": " + reason + "\n"};
    return {"[in#0 @ 0x557d755400c0] Error opening input: " + reason + "\n",
            "Error opening input file " + path + ".\n",
            "Error opening input files: " + reason + "\n"};
}

std::vector<std::string> Release::existingOutput(const std::string& path) const {
    std::vector<std::string> pieces{
        "File '" + path + "' already exists. Overwrite? [y/N] Not overwriting - exiting\n"};
    if (number_ >= 61)
        pieces.push_back("Error opening output file " + path + ".\n");
    return pieces;
}

std::vector<std::string> Release::writeFailure(const std::string& output,
                                               const std::string& reason) const {
    if (number_ < 61) {
        std::vector<std::string> pieces = indexFailure(output, reason);
        pieces.insert(pieces.begin(), "av_interleaved_write_frame(): " + reason + "\n");
        return pieces;
    }
    std::vector<std::string> pieces{
        "[vost#0:0/libx264 @ 0x557d75541a40] Error submitting a packet to the muxer: " + reason +
            "\n",
        "    Last message repeated 1 times\n", muxer + "Error muxing a packet\n"};
    if (number_ >= 70) {
        pieces.push_back(muxer + "Task finished with error code: -28 (" + reason + ")\n");
        pieces.push_back(muxer + "Terminating thread with return code -28 (" + reason + ")\n");
    }
    for (const std::string& each : indexFailure(output, reason))
        pieces.push_back(each);
    return pieces;
}

std::vector<std::string> Release::indexFailure(const std::string& output,
                                               const std::string& reason) const {
    if (number_ < 61)
        return {"Error writing trailer of " + output + ": " + reason + "\n"};
    return {muxer + "Error writing trailer: " + reason + "\n",
            muxer + "Error closing file: " + reason + "\n"};
}

std::string Release::lastWordOnIndex(const std::string& output, const std::string& reason) const {
    return number_ < 61 ? "Error closing file " + output + ": " + reason + "\n"
                        : "Conversion failed!\n";
}

std::string Release::inItsWords(std::string line) const {
    if (number_ >= 70) {
        for (std::size_t at = line.find("kB"); at != std::string::npos; at = line.find("kB", at))
            line.replace(at, 2, "KiB");
    }
    if (number_ >= 80)
        replace(line, "speed=2.25x", "speed=2.25x elapsed=0:00:03.21");
    return line;
}

} // namespace fake
