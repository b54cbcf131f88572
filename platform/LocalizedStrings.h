#pragma once

#include <QString>

#include <memory>

class QLocale;

/// Text of the string table for `key` (an IDS_ name); the key itself where the table has none.
/// Any thread, after `StringTable` was installed.
[[nodiscard]] QString getLocalString(const char* key);

/// Installs the string table `LocalizedStrings` of a resource folder into the application and
/// takes it out again when destroyed. Main thread.
class StringTable final {
public:
    StringTable(const QString& resourceFolder, const QLocale& locale);
    ~StringTable();
    Q_DISABLE_COPY_MOVE(StringTable)

    [[nodiscard]] bool isLoaded() const { return translator_ != nullptr; }

private:
    std::unique_ptr<class QTranslator> translator_;
};
