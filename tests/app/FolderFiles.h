#pragma once

#include <QByteArray>
#include <QList>

/// Contents of a remembered folder's file that name no folder; "F/" stands for the folder above
/// "there", which exists.
struct FolderFile {
    const char* what;
    QByteArray content;
};

[[nodiscard]] inline QList<FolderFile> filesWithoutFolder() {
    return {
        {"a byte-order mark belongs to the name", "\xef\xbb\xbf"
                                                  "F/there"},
        {"nothing in it", ""},
        {"a line end", "F/there\n"},
        {"a line end of another system", "F/there\r\n"},
        {"two lines", "F/there\nF/there"},
        {"nothing there", "F/gone"},
        {"not UTF-8", "F/there\xff"},
        {"not UTF-8 in the middle", "F/\xffthere"},
        {"UTF-8 that is cut", "F/there\xc3"},
        {"a null character", QByteArray("F/there\0", 8)},
        {"a null character inside", QByteArray("F/there\0/more", 13)},
        {"a tilde is a name", "~"},
        {"the toolkit's own resources", ":/"},
        {"one of them", ":/images/Popup_I.png"},
        {"a megabyte", "F/" + QByteArray(1 << 20, 'a')},
        {"a megabyte of line ends", "F/there" + QByteArray(1 << 20, '\n')},
        {"a megabyte of null characters", QByteArray(1 << 20, '\0')},
    };
}
