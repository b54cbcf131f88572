#include "encoder/FfmpegText.h"

#include <array>
#include <cmath>
#include <cstdio>
#include <cstdlib>

namespace fake {

namespace {

/// HH:MM:SS.xx of a number of seconds; a text that is no number ("N/A") stays as it is.
std::string clock(const std::string& position) {
    char* end = nullptr;
    const double seconds = std::strtod(position.c_str(), &end);
    if (end == position.c_str() || *end != '\0')
        return position;
    const long long hundredths = std::llround(std::fabs(seconds) * 100.0);
    std::array<char, 48> text{};
    std::snprintf(text.data(), text.size(), "%s%02lld:%02lld:%02lld.%02lld", seconds < 0 ? "-" : "",
                  hundredths / 360000, hundredths / 6000 % 60, hundredths / 100 % 60,
                  hundredths % 100);
    return text.data();
}

std::string counters(const std::string& position, const char* quality, const char* tail) {
    const double seconds = std::fabs(std::strtod(position.c_str(), nullptr));
    std::array<char, 80> head{};
    std::snprintf(head.data(), head.size(), "frame=%5d fps= 67 %s size=%8dkB",
                  static_cast<int>(std::fmod(seconds, 1e6) * 30), quality,
                  static_cast<int>(std::fmod(seconds, 1e6) * 97));
    return std::string(head.data()) + " time=" + clock(position) +
           " bitrate= 796.3kbits/s speed=2.25x    " + tail;
}

std::string metadata(const Movie& movie) {
    std::string text = "  Metadata:\n    major_brand     : isom\n    minor_version   : 512\n"
                       "    compatible_brands: isomiso2mp41\n";
    if (!movie.title.empty())
        text += "    title           : " + movie.title + "\n";
    return text + "    encoder         : Lavf59.27.100\n";
}

} // namespace

void Movie::set(const std::map<std::string, std::string>& values) {
    for (const auto& [key, value] : values) {
        if (key == "video")
            video = value;
        else if (key == "size")
            size = value;
        else if (key == "duration")
            duration = value;
        else if (key == "audio")
            audio = value;
        else if (key == "bitrate")
            bitrate = value;
        else if (key == "title")
            title = value;
    }
}

std::vector<std::string> banner() {
    return {"ffmpeg version 5.1.9-0+deb12u1 Copyright (c) 2000-2026 the FFmpeg developers\n",
            "  built with gcc 12 (Debian 12.2.0-14+deb12u1)\n",
            "  configuration: --prefix=/usr --extra-version=0+deb12u1 --toolchain=hardened "
            "--enable-gpl --enable-libx264 --enable-libx265 --enable-shared\n",
            "  libavutil      57. 28.100 / 57. 28.100\n"
            "  libavcodec     59. 37.100 / 59. 37.100\n"
            "  libavformat    59. 27.100 / 59. 27.100\n"};
}

std::vector<std::string> inputReport(const Movie& movie) {
    std::vector<std::string> pieces;
    pieces.push_back("Input #0, mov,mp4,m4a,3gp,3g2,mj2, from '" + movie.path + "':\n" +
                     metadata(movie));
    pieces.push_back("  Duration: " + movie.duration +
                     ", start: 0.000000, bitrate: " + movie.bitrate + " kb/s\n");
    if (movie.video != "none")
        pieces.push_back("  Stream #0:0[0x1](und): Video: " + movie.video +
                         " (Main) (hvc1 / 0x31637668), yuv420p(tv, progressive), " + movie.size +
                         " [SAR 1:1 DAR 4:3], 689 kb/s, 30 fps, 30 tbr, 15360 tbn (default)\n"
                         "    Metadata:\n      handler_name    : VideoHandler\n");
    if (movie.audio != "none")
        pieces.push_back("  Stream #0:1[0x2](und): Audio: " + movie.audio +
                         " (LC) (mp4a / 0x6134706D), 44100 Hz, mono, fltp, 69 kb/s (default)\n"
                         "    Metadata:\n      handler_name    : SoundHandler\n");
    return pieces;
}

std::vector<std::string> outputReport(const Movie& movie, const std::string& output) {
    std::vector<std::string> pieces;
    pieces.push_back("Stream mapping:\n  Stream #0:0 -> #0:0 (hevc (native) -> h264 (libx264))\n"
                     "  Stream #0:1 -> #0:1 (copy)\n");
    pieces.push_back("Press [q] to stop, [?] for help\n");
    pieces.push_back(
        "[libx264 @ 0x557d755400c0] --psnr used with psy on: results will be invalid!\n");
    pieces.push_back("Output #0, mp4, to '" + output + "':\n" + metadata(movie));
    pieces.push_back(
        "  Stream #0:0(und): Video: h264 (avc1 / 0x31637661), yuv420p(tv, progressive), " +
        movie.size + " [SAR 1:1 DAR 4:3], q=2-31, 30 fps, 15360 tbn (default)\n");
    return pieces;
}

std::string usage() {
    return "Hyper fast Audio and Video encoder\n"
           "usage: ffmpeg [options] [[infile options] -i infile]... {[outfile options] "
           "outfile}...\n\nUse -h to get full help or, even better, run 'man ffmpeg'\n";
}

std::string progressLine(const std::string& position) {
    return counters(position, "q=28.0", "\r");
}

std::string summaryLine(const std::string& position) {
    return counters(position, "q=-1.0 LPSNR=Y:inf U:inf V:inf *:inf", "\n");
}

std::string totals() {
    return "video:351kB audio:34kB subtitle:0kB other streams:0kB global headers:0kB muxing "
           "overhead: 1.448525%\n";
}

std::vector<std::string> encoderStatistics(bool quality) {
    const std::string x264 = "[libx264 @ 0x557d755400c0] ";
    const std::string mean =
        quality ? "PSNR Mean Y:43.411 U:43.503 V:43.760 Avg:43.478 Global:43.415" : "";
    const std::string end = quality ? "  " + mean + "\n" : "\n";
    return {x264 + "frame I:1     Avg QP:16.97  size:  9377" + end,
            x264 + "frame P:35    Avg QP:24.08  size:  4255" + end,
            x264 + (quality ? mean + " kb/s:717.04\n" : "kb/s:717.04\n")};
}

} // namespace fake
