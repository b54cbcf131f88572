#include "table/MadeUpRow.h"

#include "filelist/StatusWords.h"
#include "platform/LocalizedStrings.h"

JobRecordPtr addMadeUpRow(FileList& list, SharedState& state, const QString& name) {
    const auto record = std::make_shared<JobRecord>();
    record->set(key::id, static_cast<int>(++state.itemId));
    record->set(key::name, name);
    record->set(key::srcpath, QString(QStringLiteral("/home/somebody/Videos/") + name));
    record->set(key::path, QString(state.outputFolder + u'/' + name));
    record->set(key::check, 1);
    // Texts of their own, as they come out of a report.
    record->set(key::audio, QStringLiteral("aac").toUpper());
    record->set(key::video, QStringLiteral("hevc").toUpper());
    record->set(key::duration, QStringLiteral("00:01:23.45 ").trimmed());
    record->set(key::profile, list.comboBoxItems.at(1));
    record->set(key::profileForCol, list.cmbItems.at(1));
    record->set(key::status, status::STATWT);
    record->set(key::progress, getLocalString("IDS_TXT_STATUS_WAITING"));
    record->set(key::image, rowimage::remove);
    record->set(key::converted, status::STATWT);
    record->set(key::conversionstat, status::CONRUNNING);
    record->set(key::cmb, list.cmbItems.at(1));
    record->set(key::resolutionID, 3);
    record->set(key::resolution, QStringLiteral("1920x1080"));
    list.append(record, list.cmbItems.at(1));
    list.appendResolution(record->text(key::resolution));
    list.show(record);
    state.count = list.rowCount();
    return record;
}
