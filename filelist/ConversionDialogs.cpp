#include "filelist/ConversionDialogs.h"

#include "filelist/ListWindow.h"
#include "filelist/SharedState.h"
#include "platform/LocalizedStrings.h"
#include "widgets/ForeignText.h"
#include "widgets/PopUpBoxes.h"

namespace {

constexpr qsizetype longestPath = 400; // characters; a name alone always fits

QString lines(const QStringList& texts) {
    return texts.join(u'\n');
}

} // namespace

int ConversionDialogs::popUpforReplaceSkipDuplicateCancel(const QString& path) {
    return askAndRemember(
        {lines({getLocalString("IDS_TXT_POPUP_SAMENAME"), foreignLine(path, longestPath)}),
         getLocalString("IDS_BTN_POPUP_CANCEL"), getLocalString("IDS_BTN_POPUP_DUPLICATE"),
         getLocalString("IDS_BTN_POPUP_SKIP"), getLocalString("IDS_BTN_POPUP_REPLACE"),
         getLocalString("IDS_TXT_POPUP_DOFORERROR")},
        {state_.checkStatusForFileConflict, state_.resultStoredForConflict});
}

int ConversionDialogs::popUpforConversionError(const QString& name) {
    return askAndRemember(
        {lines({getLocalString("IDS_TXT_POPUP_ERROR"), getLocalString("IDS_TXT_POPUP_WANTTOSKIP"),
                foreignLine(name, longestPath)}),
         getLocalString("IDS_BTN_STOP"), getLocalString("IDS_BTN_POPUP_SKIP"),
         getLocalString("IDS_TXT_POPUP_DOFORERROR")},
        {state_.checkStatusForConversionError, state_.resultStoredForConversionError});
}

int ConversionDialogs::popUpforSdCardDelay() {
    return askAndRemember(
        {lines({getLocalString("IDS_TXT_SDCARD_DELAY"), getLocalString("IDS_TXT_CONTINUE")}),
         getLocalString("IDS_BTN_POPUP_CANCEL"), getLocalString("IDS_BTN_POPUP_OK"),
         getLocalString("IDS_TXT_POPUP_DOFORERROR")},
        {state_.checkStatusForSdCardDelay, state_.resultStoredForSdCardDelay});
}

int ConversionDialogs::askSourceUnavailable() {
    return ask({getLocalString("IDS_TXT_POPUP_SOURCE_UNAVAILABLE"),
                getLocalString("IDS_BTN_POPUP_SKIP"), getLocalString("IDS_TXT_POPUP_TRYAGAIN")});
}

int ConversionDialogs::askSourceRemoved() {
    return ask({getLocalString("IDS_TXT_POPUP_UNEXPECTEDREMOVE"),
                getLocalString("IDS_BTN_POPUP_OK"), getLocalString("IDS_TXT_POPUP_TRYAGAIN")});
}

void ConversionDialogs::tellOutputFolderUnavailable() {
    ask({getLocalString("IDS_BTN_POPUP_OUTFLDRUNAVAILABLE"), getLocalString("IDS_BTN_POPUP_OK")});
}

void ConversionDialogs::tellMemoryFull() {
    ask({lines({getLocalString("IDS_TXT_POPUP_MEMORYFULL"),
                getLocalString("IDS_TXT_DATA_NOTCONVERTED")}),
         getLocalString("IDS_BTN_POPUP_OK")});
}

int ConversionDialogs::ask(const QStringList& request) {
    return PopUpBoxes(window_.boxParent()).PopUpMesg(request);
}

int ConversionDialogs::askAndRemember(const QStringList& request, Remembered remembered) {
    const QStringList answered = PopUpBoxes(window_.boxParent()).PopUpMesgWithCheckBox(request);
    const int answer = answered.value(0).toInt();
    remembered.mark = answered.value(1).toInt() != 0;
    if (remembered.mark)
        remembered.answer = answer;
    return answer;
}
