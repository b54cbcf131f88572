#pragma once

#include <QString>

#include <memory>

class QLocale;

/// Text of the string table for `key` (an IDS_ name); the key itself where the table has none.
/// Any thread, after `StringTable` was installed.
[[nodiscard]] QString getLocalString(const char* key);

/// Installs the string table `LocalizedStrings` of a resource folder into the application, in the
/// language that suits the locale best, and Qt's own texts in the same language where they are on
/// the system. Takes them out again when destroyed. Main thread.
class StringTable final {
public:
    StringTable(const QString& resourceFolder, const QLocale& locale);
    ~StringTable();
    Q_DISABLE_COPY_MOVE(StringTable)

    [[nodiscard]] bool isLoaded() const { return translator_ != nullptr; }
    /// Its name, like "de" or "pt_BR".
    [[nodiscard]] QString language() const { return language_; }
    /// How the language is written, and so which way the window is laid out.
    [[nodiscard]] Qt::LayoutDirection direction() const;

private:
    QString language_;
    std::unique_ptr<class QTranslator> qtTranslator_;
    std::unique_ptr<class QTranslator> translator_;
};
