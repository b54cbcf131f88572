// A stand-in for the ffmpeg program whose behaviour is written in the movie that it is given: see
// README.md in this folder for the script language.
#include "encoder/FfmpegText.h"
#include "encoder/Release.h"
#include "encoder/Script.h"

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <vector>

#include <fcntl.h>
#include <signal.h>
#include <sys/file.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <time.h>
#include <unistd.h>

namespace {

enum class OnTerm { Finish, Quit, Ignore, Die };

constexpr unsigned kLongestLifeSeconds = 300;
volatile std::sig_atomic_t receivedSignal = 0;

void noteSignal(int number) {
    receivedSignal = number;
}

bool exists(const std::string& path) {
    struct stat facts {};
    return ::stat(path.c_str(), &facts) == 0;
}

/// Runs the steps of one section. Leaves the process by itself at `exit`, `abort` and signals.
class Encoder final {
public:
    explicit Encoder(std::vector<std::string> arguments) : arguments_(std::move(arguments)) {}

    void logStart(const std::string& path) const;
    int run();

private:
    void readRelease();
    bool answerQuestion();
    int probe();
    int encode();
    [[nodiscard]] fake::Steps encodeSteps() const;
    [[nodiscard]] std::string beside(const std::string& path) const;
    void play(const fake::Steps& steps);
    void play(const fake::Step& step);
    bool playOutput(const fake::Step& step);
    bool playFile(const fake::Step& step);
    void say(const std::string& text);
    void sayAll(const std::vector<std::string>& pieces);
    void split(const std::string& text);
    void flood(long long bytes);
    void sleepFor(long milliseconds);
    void writeOutput(const std::string& bytes);
    void onTerm(OnTerm reaction);
    void reactToSignal();
    void holdPipe(long milliseconds);
    void holdAlone(const std::string& path) const;
    void listFolder(const std::string& text) const;

    std::vector<std::string> arguments_;
    fake::Release release_;
    fake::Script script_;
    fake::Movie movie_;
    std::string output_;
    std::string position_ = "0";
    OnTerm onTerm_ = OnTerm::Finish;
    int outputFile_ = -1;
    bool overwrite_ = false;
    bool quality_ = false;
};

void appendLine(const std::string& path, const std::string& line, int flags) {
    const int file = ::open(path.c_str(), O_WRONLY | O_APPEND | O_CLOEXEC | flags, 0644);
    if (file < 0)
        return;
    const std::string whole = line + "\n";
    if (::write(file, whole.data(), whole.size()) < 0)
        std::perror("log");
    ::close(file);
}

void Encoder::logStart(const std::string& path) const {
    std::string line = std::to_string(::getpid());
    for (std::size_t i = 1; i < arguments_.size(); ++i)
        line += "\t" + arguments_[i];
    appendLine(path, line, O_CREAT);
}

int Encoder::run() {
    const std::string standing = arguments_.front() + ".log";
    if (exists(standing))
        logStart(standing);
    readRelease();
    if (answerQuestion())
        return 0;
    for (std::size_t i = 1; i < arguments_.size(); ++i) {
        if (arguments_[i] == "-i" && i + 1 < arguments_.size())
            movie_.path = arguments_[++i];
        else if (arguments_[i] == "-y")
            overwrite_ = true;
        else if (arguments_[i] == "-psnr" && movie_.path.empty())
            quality_ = true;
        else if (i + 1 == arguments_.size())
            output_ = arguments_[i];
    }
    sayAll(release_.banner());
    if (quality_ && !release_.knowsQualityReport()) {
        say("Unrecognized option 'psnr'.\n"
            "Error splitting the argument list: Option not found\n");
        return 8;
    }
    if (movie_.path.empty()) {
        say(release_.usage());
        return 1;
    }
    if (!script_.read(movie_.path)) {
        const bool isThere = script_.isReadable();
        sayAll(release_.unusableSource(movie_.path, isThere
                                                        ? "Invalid data found when processing input"
                                                        : "No such file or directory"));
        return isThere ? release_.invalidSourceStatus() : release_.noSourceStatus();
    }
    return output_.empty() ? probe() : encode();
}

/// What stands in a file `ffmpeg.release` beside the program.
void Encoder::readRelease() {
    std::string text;
    if (std::FILE* file = std::fopen((arguments_.front() + ".release").c_str(), "re")) {
        for (int c = std::fgetc(file); c != EOF; c = std::fgetc(file))
            text += static_cast<char>(c);
        std::fclose(file);
    }
    release_ = fake::Release(text);
    // Without the file it is one for tests that do not ask for the quality.
    quality_ = text.empty();
}

bool Encoder::answerQuestion() {
    const auto question = std::find(arguments_.begin(), arguments_.end(), "-h");
    if (arguments_.end() - question < 2)
        return false;
    if (std::find(arguments_.begin(), question, "-hide_banner") == question)
        sayAll(release_.banner());
    const std::string answer =
        *(question + 1) == "long" ? release_.longHelp() : release_.encoderHelp();
    std::fputs(answer.c_str(), stdout);
    return true;
}

int Encoder::probe() {
    if (script_.hasSection("probe")) {
        play(script_.section("probe"));
        return 1;
    }
    play(fake::Step{"report", "", {}});
    return 1;
}

int Encoder::encode() {
    if (exists(output_) && !overwrite_) {
        sayAll(fake::inputReport(movie_));
        sayAll(release_.existingOutput(output_));
        return release_.existingOutputStatus();
    }
    if (!release_.hasX264()) {
        say("Unknown encoder 'libx264'\n");
        return 1;
    }
    onTerm(OnTerm::Finish);
    play(encodeSteps());
    return 0;
}

/// The section of this start: "encode N" at the Nth start on this movie where there is one, else
/// "encode". The starts are counted in a file beside the movie.
fake::Steps Encoder::encodeSteps() const {
    if (script_.hasNumberedSections()) {
        const std::string counter = movie_.path + ".starts";
        appendLine(counter, std::to_string(::getpid()), O_CREAT);
        struct stat facts {};
        long starts = 0;
        if (std::FILE* file = ::stat(counter.c_str(), &facts) == 0
                                  ? std::fopen(counter.c_str(), "re")
                                  : nullptr) {
            for (int c = std::fgetc(file); c != EOF; c = std::fgetc(file))
                starts += c == '\n';
            std::fclose(file);
        }
        const std::string numbered = "encode " + std::to_string(starts);
        if (script_.hasSection(numbered))
            return script_.section(numbered);
    }
    if (script_.hasSection("encode"))
        return script_.section("encode");
    return {{"create", "", {}},       {"header", "", {}},       {"progress", "2.50", {}},
            {"wait", "100", {}},      {"progress", "5.00", {}}, {"wait", "100", {}},
            {"progress", "7.50", {}}, {"wait", "100", {}},      {"write", "4096", {}},
            {"summary", "10.00", {}}};
}

/// A relative path of the script lies beside the movie.
std::string Encoder::beside(const std::string& path) const {
    if (!path.empty() && path.front() == '/')
        return path;
    const std::size_t slash = movie_.path.rfind('/');
    return slash == std::string::npos ? path : movie_.path.substr(0, slash + 1) + path;
}

void Encoder::play(const fake::Steps& steps) {
    for (const fake::Step& step : steps)
        play(step);
}

void Encoder::play(const fake::Step& step) {
    if (receivedSignal != 0)
        reactToSignal();
    const auto number = [&] { return std::strtol(step.text.c_str(), nullptr, 10); };
    if (playOutput(step) || playFile(step))
        return;
    if (step.command == "wait") {
        sleepFor(number());
    } else if (step.command == "wait-file") {
        while (!exists(beside(step.text)))
            sleepFor(5);
    } else if (step.command == "wait-gone") {
        while (exists(beside(step.text)))
            sleepFor(5);
    } else if (step.command == "hang") {
        for (;;)
            sleepFor(1000);
    } else if (step.command == "loop") {
        for (long i = number(); i > 0; --i)
            play(step.body);
    } else if (step.command == "ignore-term") {
        onTerm(OnTerm::Ignore);
    } else if (step.command == "on-term") {
        onTerm(step.text == "ignore" ? OnTerm::Ignore
               : step.text == "die"  ? OnTerm::Die
               : step.text == "quit" ? OnTerm::Quit
                                     : OnTerm::Finish);
    } else if (step.command == "grandchild") {
        holdPipe(number());
    } else if (step.command == "abort") {
        std::abort();
    } else if (step.command == "exit") {
        std::_Exit(static_cast<int>(number()));
    } else {
        say("fake encoder: unknown command '" + step.command + "'\n");
        std::_Exit(99);
    }
}

/// The commands that print.
bool Encoder::playOutput(const fake::Step& step) {
    if (step.command == "print") {
        say(fake::unescape(step.text));
    } else if (step.command == "split") {
        split(step.text);
    } else if (step.command == "flood") {
        flood(std::strtoll(step.text.c_str(), nullptr, 10));
    } else if (step.command == "report") {
        movie_.set(fake::words(step.text));
        sayAll(fake::inputReport(movie_));
        say("At least one output file must be specified\n");
    } else if (step.command == "header") {
        movie_.set(fake::words(step.text));
        sayAll(fake::inputReport(movie_));
        sayAll(fake::outputReport(movie_, output_));
    } else if (step.command == "progress") {
        position_ = step.text;
        say(release_.progressLine(step.text));
    } else if (step.command == "first-report") {
        say(release_.firstReport());
    } else if (step.command == "damage") {
        sayAll(release_.damage());
    } else if (step.command == "write-failure") {
        sayAll(release_.writeFailure(output_, step.text));
    } else if (step.command == "index-failure") {
        sayAll(release_.indexFailure(output_, step.text));
        sayAll(release_.ending(position_, quality_));
        say(release_.lastWordOnIndex(output_, step.text));
        std::_Exit(release_.indexFailureStatus());
    } else if (step.command == "summary") {
        position_ = step.text;
        sayAll(release_.ending(step.text, quality_));
    } else {
        return false;
    }
    return true;
}

/// The commands that touch files.
bool Encoder::playFile(const fake::Step& step) {
    if (step.command == "create")
        writeOutput({});
    else if (step.command == "write")
        writeOutput(std::string(std::strtoul(step.text.c_str(), nullptr, 10), 'x'));
    else if (step.command == "write-text")
        writeOutput(fake::unescape(step.text));
    else if (step.command == "touch")
        ::close(::open(beside(step.text).c_str(), O_WRONLY | O_CREAT | O_CLOEXEC, 0644));
    else if (step.command == "unlink")
        ::unlink(beside(step.text).c_str());
    else if (step.command == "list")
        listFolder(step.text);
    else if (step.command == "log")
        logStart(beside(step.text));
    else if (step.command == "alone")
        holdAlone(beside(step.text));
    else
        return false;
    return true;
}

/// Like ffmpeg a full pipe holds the encoder up, and a pipe nobody reads any more does not end it.
void Encoder::say(const std::string& text) {
    std::size_t done = 0;
    while (done < text.size()) {
        const ssize_t count = ::write(STDERR_FILENO, text.data() + done, text.size() - done);
        if (count >= 0)
            done += static_cast<std::size_t>(count);
        else if (errno != EINTR)
            return;
        else if (receivedSignal != 0)
            reactToSignal();
    }
}

void Encoder::sayAll(const std::vector<std::string>& pieces) {
    for (const std::string& piece : pieces)
        say(piece);
}

void Encoder::split(const std::string& text) {
    char* rest = nullptr;
    const long size = std::max(1L, std::strtol(text.c_str(), &rest, 10));
    const std::string bytes = fake::unescape(*rest == ' ' ? rest + 1 : rest);
    for (std::size_t at = 0; at < bytes.size(); at += static_cast<std::size_t>(size)) {
        say(bytes.substr(at, static_cast<std::size_t>(size)));
        sleepFor(2);
    }
}

void Encoder::flood(long long bytes) {
    const std::string line = "[hevc @ 0x55d0c1a2b340] Could not find ref with POC 42, and so on\n";
    std::string block;
    while (block.size() < 64 * 1024)
        block += line;
    for (; bytes > 0; bytes -= static_cast<long long>(block.size()))
        say(bytes >= static_cast<long long>(block.size())
                ? block
                : block.substr(block.size() - static_cast<std::size_t>(bytes)));
}

void Encoder::sleepFor(long milliseconds) {
    struct timespec left {
        milliseconds / 1000, milliseconds % 1000 * 1000000
    };
    while (::nanosleep(&left, &left) != 0 && errno == EINTR)
        if (receivedSignal != 0)
            reactToSignal();
}

void Encoder::writeOutput(const std::string& bytes) {
    if (outputFile_ < 0)
        outputFile_ = ::open(output_.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0644);
    if (outputFile_ < 0) {
        say(output_ + ": " + (errno == ENOENT ? "No such file or directory\n" : "Not writable\n"));
        std::_Exit(1);
    }
    std::size_t done = 0;
    while (done < bytes.size()) {
        const ssize_t count = ::write(outputFile_, bytes.data() + done, bytes.size() - done);
        if (count < 0)
            return;
        done += static_cast<std::size_t>(count);
    }
}

void Encoder::onTerm(OnTerm reaction) {
    onTerm_ = reaction;
    struct sigaction action {};
    action.sa_handler = reaction == OnTerm::Die      ? SIG_DFL
                        : reaction == OnTerm::Ignore ? SIG_IGN
                                                     : noteSignal;
    ::sigaction(SIGTERM, &action, nullptr);
    ::sigaction(SIGINT, &action, nullptr);
}

/// ffmpeg asked to end finishes its file and prints the summary with LPSNR= all the same.
void Encoder::reactToSignal() {
    const int number = receivedSignal;
    receivedSignal = 0;
    if (onTerm_ == OnTerm::Finish) {
        sayAll(release_.ending(position_, quality_));
        say("Exiting normally, received signal " + std::to_string(number) + ".\n");
    }
    std::_Exit(255);
}

/// A process that outlives the encoder and keeps its error stream open.
void Encoder::holdPipe(long milliseconds) {
    if (::fork() != 0)
        return;
    onTerm(OnTerm::Die);
    receivedSignal = 0;
    ::close_range(STDERR_FILENO + 1, ~0U, 0); // the lock of `alone` is the encoder's
    sleepFor(milliseconds);
    std::_Exit(0);
}

/// Holds a lock for as long as this encoder lives; one that finds it held notes its process number
/// in the file, which stays empty where encoders only ever ran one after the other.
void Encoder::holdAlone(const std::string& path) const {
    const int file = ::open(path.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0644);
    if (file >= 0 && ::flock(file, LOCK_EX | LOCK_NB) != 0)
        appendLine(path, std::to_string(::getpid()), 0);
}

void Encoder::listFolder(const std::string& text) const {
    const std::size_t blank = text.find(' ');
    std::string lines;
    std::error_code none;
    for (const auto& entry : std::filesystem::directory_iterator(text.substr(0, blank), none))
        lines +=
            std::to_string(entry.file_size(none)) + ' ' + entry.path().filename().string() + '\n';
    appendLine(beside(text.substr(blank + 1)), lines, O_CREAT);
}

} // namespace

int main(int argc, char** argv) {
    ::alarm(kLongestLifeSeconds);
    const struct rlimit noCore {};
    ::setrlimit(RLIMIT_CORE, &noCore);
    ::signal(SIGPIPE, SIG_IGN);
    ::signal(SIGSEGV, SIG_DFL); // a sanitizer would have the last words
    return Encoder(std::vector<std::string>(argv, argv + argc)).run();
}
