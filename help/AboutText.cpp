#include "help/AboutText.h"

#include "platform/LocalizedStrings.h"

#include <QStringList>

#include <curl/curl.h>

namespace {

// The licences have their own names, in every language.
QStringList usedParts() {
    return {
        QStringLiteral("Qt %1: GNU Lesser General Public License, version 3")
            .arg(QString::fromLatin1(qVersion())),
        QStringLiteral("libcurl %1: curl license")
            .arg(QString::fromLatin1(curl_version_info(CURLVERSION_NOW)->version)),
        QStringLiteral("libxcb: MIT/X11 license"),
        QStringLiteral("ffmpeg: GNU General Public License, version 2 or later"),
    };
}

} // namespace

QString aboutHtml(const AboutFacts& facts) {
    const auto paragraph = [](const QString& text) {
        return QString(u"<p>" + text.toHtmlEscaped() + u"</p>\n");
    };
    QString html = u"<h3>" + QString(facts.program + u' ' + facts.version).toHtmlEscaped() +
                   u"</h3>\n" + paragraph(getLocalString("IDS_TXT_APP_DESCRIPTION"));
    html += paragraph(
        facts.encoderPlace.isEmpty()
            ? getLocalString("IDS_ABOUT_NO_ENCODER")
            : getLocalString("IDS_ABOUT_ENCODER")
                  .arg(facts.encoderVersion.isEmpty() ? QStringLiteral("?") : facts.encoderVersion,
                       facts.encoderPlace));
    html += paragraph(getLocalString("IDS_ABOUT_USES")) + QStringLiteral("<ul>\n");
    for (const QString& part : usedParts())
        html += u"<li>" + part.toHtmlEscaped() + u"</li>\n";
    return html + QStringLiteral("</ul>\n") +
           paragraph(u"\u2066\u00a9 2026 the maintainers of " + facts.program + u'\u2069');
}
