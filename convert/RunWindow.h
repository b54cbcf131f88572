#pragma once

#include "filelist/ListWindow.h"

/// What a run needs of the main window, which is it. Main thread.
class RunWindow : public ListWindow {
public:
    /// The output folder as it is shown.
    [[nodiscard]] virtual QString outputFolderText() const = 0;
    [[nodiscard]] virtual bool isOpenFolderChecked() const = 0;

    /// Convert, Add File, Select Folder and the main quality list.
    virtual void setRunControlsEnabled(bool enabled) = 0;
    virtual void uncheckOpenFolder() = 0;
    virtual void showFolder(const QString& path) = 0;
};
