#pragma once

#include "app/ControllerFixture.h"
#include "app/RealMovies.h"
#include "faults/Fault.h"

#include <QMap>

#include <memory>
#include <utility>

/// A program with a list of movies that a fault comes to, and everything that must hold once it is
/// over. Main thread.
class FaultScene final {
public:
    explicit FaultScene(const Fault& fault);
    Q_DISABLE_COPY_MOVE(FaultScene)

    ControllerFixture program;

    /// Starts the program once more, over the same folders.
    void restart();

    // The list. The names are those of files in the movies' folder.
    void addScripted(const QString& name, const QStringList& encode);
    /// A movie that any encoder converts.
    [[nodiscard]] bool addGood(const QString& name);
    void add(const QString& name) { program.add({source(name)}); }
    [[nodiscard]] QString source(const QString& name) const {
        return program.movies() + u'/' + name;
    }
    [[nodiscard]] QString output(const QString& name) const { return outputFolder_ + u'/' + name; }
    /// Converts into another folder; empty until now.
    void setOutputFolder(const QString& folder);
    [[nodiscard]] const QString& outputFolder() const { return outputFolder_; }
    /// Movies of the real encoder; made once for all scenes.
    [[nodiscard]] static const RealMovies& movies();
    /// A movie like this under that name; false where it cannot be made.
    [[nodiscard]] bool makeReal(const QString& name, const RealMovies::Wish& wish = {}) const;
    /// One of a minute.
    [[nodiscard]] bool makeLong(const QString& name) const;

    /// The fault takes this file away, or changes it.
    void expectChange(const QString& path) { changing_ += path; }
    [[nodiscard]] bool isRealEncoder() const { return fault_.encoder == Fault::Encoder::Real; }
    /// Goes before the program's folders do.
    void keep(std::shared_ptr<void> thing) { kept_ = std::move(thing); }
    /// Names why the encoder of this fault cannot be used, or nothing.
    [[nodiscard]] QString useEncoder();

    // The run.
    void run();
    /// Waits until the first encoder has said a position.
    [[nodiscard]] bool waitForProgress();
    [[nodiscard]] qint64 encoderPid();
    /// Presses the row's button as soon as the encoder is under way; true when it is suspended.
    [[nodiscard]] bool pause();
    void stop() { program.click("btnStop"); }

    // Afterwards.
    /// What is not as it must be; empty when the fault was survived.
    [[nodiscard]] QString complaints();
    [[nodiscard]] QString outcome();

    /// Files in a folder with what is in them.
    [[nodiscard]] static QMap<QString, QByteArray> contentsOf(const QString& folder);

private:
    void setPatience();
    [[nodiscard]] QStringList boxKeys() const;
    /// Notes the labels and tooltips that are taken for markup.
    void lookForMarkup();
    [[nodiscard]] QStringList newOutputs() const;
    [[nodiscard]] QStringList changedFiles() const;

    const Fault fault_;
    QString outputFolder_;
    QStringList changing_;
    QMap<QString, QByteArray> before_;
    QStringList markup_;
    bool cameToAnEnd_ = false;
    std::shared_ptr<void> kept_;
};

/// The processes whose command line names something in this folder.
[[nodiscard]] QList<qint64> processesOf(const QString& folder);

/// Brings the fault about and looks at what is left: the line of the table.
[[nodiscard]] struct FaultRow survive(const Fault& fault);
