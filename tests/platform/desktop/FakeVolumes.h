#pragma once

#include "platform/desktop/VolumeInfo.h"

#include <QList>
#include <QMap>

/// Volumes as a test wants them: the facts of the longest folder in the table that holds the path.
class FakeVolumes final : public VolumeInfo {
public:
    QMap<QString, VolumeFacts> table;
    QList<QString> asked;

    VolumeFacts facts(const QString& path) override {
        asked += path;
        VolumeFacts found;
        qsizetype longest = -1;
        for (auto it = table.cbegin(); it != table.cend(); ++it) {
            const bool holds = path == it.key() || path.startsWith(QString(it.key() % u'/'));
            if (holds && it.key().size() > longest) {
                longest = it.key().size();
                found = it.value();
            }
        }
        return found;
    }
};
