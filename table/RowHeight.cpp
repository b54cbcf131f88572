#include "table/RowHeight.h"

#include "table/FileTableDelegates.h"
#include "table/ProgressCell.h"

#include <QFontMetricsF>
#include <QStyle>
#include <QStyleOptionComboBox>
#include <QTableView>
#include <QtMath>

#include <algorithm>

namespace {

int editorHeight(const QTableView& view) {
    QStyleOptionComboBox option;
    option.initFrom(&view);
    option.editable = true;
    // As the list itself measures its line.
    const QSize line(0, std::max(qCeil(QFontMetricsF(view.font()).height()), 14) + 2);
    return view.style()->sizeFromContents(QStyle::CT_ComboBox, &option, line, &view).height();
}

int barHeight(const QTableView& view) {
    QStyleOptionViewItem option;
    option.initFrom(&view);
    option.font = view.font();
    option.widget = &view;
    return ProgressCell::heightOfBar(option);
}

} // namespace

int rowHeightOf(const QTableView& view) {
    QStyleOption option;
    option.initFrom(&view);
    const int usual =
        view.style()->pixelMetric(QStyle::PM_HeaderDefaultSectionSizeVertical, &option, &view);
    return std::max({usual, editorHeight(view), barHeight(view), RowButtonDelegate::height()});
}

int headerHeightOf(const QTableView& view) {
    QStyleOption option;
    option.initFrom(&view);
    const auto metric = [&](QStyle::PixelMetric which) {
        return view.style()->pixelMetric(which, &option, &view);
    };
    return metric(QStyle::PM_IndicatorHeight) + 2 * metric(QStyle::PM_HeaderMargin);
}
