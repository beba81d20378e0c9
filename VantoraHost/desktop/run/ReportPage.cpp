#include "VantoraHost/desktop/run/ReportPage.h"

#include "VantoraHost/desktop/texts/ShownTexts.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QLocale>
#include <QtCore/QStringList>

#include <algorithm>

namespace vantora::desktop {

namespace {

constexpr char style[] = R"(
:root { color-scheme: light dark; --ground: #fff; --text: #1b1b1b; --faint: #5f6368;
  --line: #d0d3d8; --bad: #b3261e; --page: #fff; }
@media (prefers-color-scheme: dark) {
  :root { --ground: #1e1f22; --text: #e6e6e6; --faint: #a4a8ae; --line: #45484d; --bad: #ff8a80; }
}
body { margin: 2rem auto; max-width: 70rem; padding: 0 1rem; background: var(--ground);
  color: var(--text); font: 1rem/1.45 system-ui, sans-serif; }
h1 { font-size: 1.4rem; margin: 0 0 .3rem; }
p { margin: .3rem 0; }
article { border-top: 1px solid var(--line); padding: .7rem 0; break-inside: avoid-page; }
h2 { font-size: 1rem; margin: 0; overflow-wrap: anywhere; }
.path, .why, .more { color: var(--faint); font-size: .85rem; overflow-wrap: anywhere; }
.bad { color: var(--bad); }
.pictures { display: flex; flex-wrap: wrap; gap: .6rem; margin: .5rem 0 0; padding: 0;
  list-style: none; }
figure { margin: 0; text-align: center; break-inside: avoid; }
figure img { max-width: 6.5rem; max-height: 8rem; background: var(--page);
  border: 1px solid var(--line); vertical-align: bottom; }
figcaption { font-size: .8rem; color: var(--faint); }
@media print {
  :root { color-scheme: light; --ground: #fff; --text: #000; --faint: #444; --line: #999;
    --bad: #900; }
  body { margin: 0; max-width: none; font-size: 10pt; }
}
)";

QString element(const char* tag, const char* kind, const QString& text)
{
    return text.isEmpty() ? QString()
                          : QStringLiteral("<%1 class=\"%2\">%3</%1>\n")
                                .arg(QLatin1String(tag), QLatin1String(kind), text.toHtmlEscaped());
}

QString pictureHtml(const ReportPicture& picture)
{
    const QString page = QCoreApplication::translate("ReportPage", "page %1")
                             .arg(numberText(static_cast<std::uint64_t>(picture.page)));
    return "<li><figure><img alt=\"" + page.toHtmlEscaped() + "\" src=\"data:image/jpeg;base64," +
           QString::fromLatin1(picture.jpeg.toBase64()) + "\"><figcaption>" + page.toHtmlEscaped() +
           "</figcaption></figure></li>\n";
}

QString picturesHtml(const ReportRow& row)
{
    QString items;
    std::size_t shown = 0;
    for (const ReportPicture& picture : row.pictures) {
        if (!picture.jpeg.isEmpty()) {
            items += pictureHtml(picture);
            ++shown;
        }
    }
    QString html = items.isEmpty() ? QString() : "<ul class=\"pictures\">\n" + items + "</ul>\n";
    if (!row.whyNoPicture.isEmpty()) {
        html += element(
            "p", "why",
            QCoreApplication::translate("ReportPage", "No picture: %1.").arg(row.whyNoPicture));
    } else if (shown < row.removed) {
        html += element("p", "more",
                        QCoreApplication::translate(
                            "ReportPage",
                            "%n page(s) that went are not shown, so that this file stays small.",
                            nullptr, asCount(row.removed - shown)));
    }
    return html;
}

QString rowHtml(const ReportRow& row)
{
    QStringList figures = {row.outcome};
    if (row.removed > 0) {
        figures << QCoreApplication::translate("ReportPage", "%n page(s) removed", nullptr,
                                               asCount(row.removed));
    }
    if (!row.pages.isEmpty()) {
        figures << QCoreApplication::translate("ReportPage", "pages: %1").arg(row.pages);
    }
    if (!row.size.isEmpty()) {
        figures << row.size;
    }
    return "<article>\n" + element("h2", "name", row.name) + element("p", "path", row.path) +
           element("p", row.isGood ? "good" : "bad", figures.join(QStringLiteral(" · "))) +
           element("p", "path",
                   row.output.isEmpty() || row.output == row.path
                       ? QString()
                       : QCoreApplication::translate("ReportPage", "saved as %1").arg(row.output)) +
           picturesHtml(row) + "</article>\n";
}

} // namespace

std::string reportHtml(const ReportContent& content)
{
    std::string html =
        ("<!DOCTYPE html>\n<html lang=\"" + QLocale().bcp47Name().toHtmlEscaped() +
         "\">\n<head>\n<meta charset=\"utf-8\">\n"
         "<meta http-equiv=\"Content-Security-Policy\" content=\"default-src 'none'; "
         "img-src data:; style-src 'unsafe-inline'\">\n"
         "<meta name=\"viewport\" content=\"width=device-width\">\n<title>" +
         content.title.toHtmlEscaped() + "</title>\n<style>" + QLatin1String(style) +
         "</style>\n</head>\n<body>\n" + element("h1", "title", content.title) +
         element("p", "summary", content.summary))
            .toStdString();
    for (const ReportRow& row : content.rows) {
        html += rowHtml(row).toStdString();
    }
    return html + "</body>\n</html>\n";
}

} // namespace vantora::desktop
