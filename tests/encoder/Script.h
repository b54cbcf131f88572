#pragma once

#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace fake {

/// One line of a script: a command word and the rest of the line. A loop also has its body.
struct Step {
    std::string command;
    std::string text;
    std::vector<Step> body;
};

using Steps = std::vector<Step>;

/// What a scripted movie says about the encoder's behaviour: the sections by name ("probe",
/// "encode", "encode 2", ...).
class Script final {
public:
    /// False where the file is missing or is no script; `isReadable` tells the two apart.
    bool read(const std::string& path);

    [[nodiscard]] bool isReadable() const { return readable_; }
    [[nodiscard]] bool hasSection(const std::string& name) const;
    [[nodiscard]] bool hasNumberedSections() const;
    [[nodiscard]] const Steps& section(const std::string& name) const;

private:
    std::map<std::string, Steps> sections_;
    bool readable_ = false;
};

/// The words `key=value` and `key="a value"` of a step's text.
[[nodiscard]] std::map<std::string, std::string> words(std::string_view text);

/// Replaces \r \n \t \\ and \xHH by what they stand for.
[[nodiscard]] std::string unescape(std::string_view text);

} // namespace fake
