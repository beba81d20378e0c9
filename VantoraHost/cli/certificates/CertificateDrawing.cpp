#include "VantoraHost/cli/certificates/CertificateDrawing.h"

#include "VantoraHost/core/Figures.h"
#include "VantoraHost/core/PageNumbers.h"
#include "VantoraHost/core/ShownText.h"
#include "VantoraHost/core/Target.h"

#include <QtCore/QBuffer>
#include <QtGui/QFontDatabase>
#include <QtGui/QPdfWriter>
#include <QtGui/QTextCursor>
#include <QtGui/QTextDocument>
#include <QtGui/QTextTable>

#include <algorithm>
#include <utility>
#include <vector>

namespace vantora::cli {

namespace {

// A certificate is read by a person; what is longer than this stands in the run's report.
constexpr std::size_t longestText = 2000;
constexpr std::size_t longestNumbers = 6000;
constexpr std::size_t longestLabel = 40;
constexpr std::size_t mostSentences = 40;

QString textOf(const std::string& text)
{
    return QString::fromStdString(text);
}

QString cut(const QString& text, std::size_t longest)
{
    const int most = static_cast<int>(longest);
    return text.size() <= most ? text : text.left(most) + QStringLiteral("…");
}

/// What came from outside, on one line and not longer than fits.
QString foreign(const std::string& text, std::size_t longest = longestText)
{
    return cut(textOf(shown(text.substr(0, 4 * longest))), longest);
}

QString fileName(const std::string& name, const char* stream)
{
    return name == standardStream ? QLatin1String(stream) : foreign(name);
}

QString bytesText(const std::optional<std::uint64_t>& bytes)
{
    return bytes ? textOf(grouped(*bytes) + (*bytes == 1 ? " byte" : " bytes")) : QString();
}

QString countText(const std::optional<int>& count)
{
    return count ? textOf(counted(static_cast<std::uint64_t>(*count), "page", "pages")) : QString();
}

// As many parts as fit.
QString listOf(const QStringList& parts, std::size_t longest)
{
    int fitting = 0;
    for (std::size_t length = 0; fitting < parts.size() && length < longest; ++fitting) {
        length += static_cast<std::size_t>(parts[fitting].size()) + 2;
    }
    QStringList shown = parts.mid(0, fitting);
    if (fitting < parts.size()) {
        shown << QStringLiteral("and %1 more").arg(parts.size() - fitting);
    }
    return shown.join(QStringLiteral(", "));
}

QString removedText(const DocumentReport& report)
{
    const std::vector<int> removed = report.pagesRemoved.value_or(std::vector<int>());
    return removed.empty() ? QStringLiteral("none")
                           : listOf(textOf(pageRangeText(removed)).split(','), longestNumbers);
}

QString labelsText(const std::vector<verification::LabelledPages>& runs)
{
    QStringList parts;
    for (const verification::LabelledPages& pages : runs) {
        const QString first = foreign(pages.firstLabel, longestLabel);
        parts << (pages.first == pages.last
                      ? QStringLiteral("%1 (%2)").arg(QString::number(pages.first), first)
                      : QStringLiteral("%1-%2 (%3 to %4)")
                            .arg(QString::number(pages.first), QString::number(pages.last), first,
                                 foreign(pages.lastLabel, longestLabel)));
    }
    return listOf(parts, longestText);
}

/// Fills a document with headings and tables.
class CertificateSheet {
public:
    using Row = std::pair<QString, QString>;

    explicit CertificateSheet(QTextDocument& document) : cursor_(&document)
    {
        QTextOption option;
        option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
        document.setDefaultTextOption(option);
        QFont font(QStringLiteral("sans-serif"), 9);
        // Spaced letters have no ligatures, so that what is searched for or copied is as it was.
        font.setLetterSpacing(QFont::AbsoluteSpacing, 0.05);
        document.setDefaultFont(font);
    }

    void addTitle(const QString& text) { addLine(text, 16, true, 0, 4); }
    void addHeading(const QString& text) { addLine(text, 11, true, 10, 2); }
    void addParagraph(const QString& text) { addLine(text, 9, false, 0, 4); }

    /// Rows of a name and a text; those without a text are left out.
    void addTable(const std::vector<Row>& rows)
    {
        std::vector<std::vector<QString>> cells;
        for (const Row& row : rows) {
            if (!row.second.isEmpty()) {
                cells.push_back({row.first, row.second});
            }
        }
        addCells(cells, {18, 82});
    }

    void addCells(const std::vector<std::vector<QString>>& rows, const std::vector<int>& widths)
    {
        if (rows.empty()) {
            return;
        }
        QTextTableFormat format;
        format.setBorder(0.5);
        format.setBorderStyle(QTextFrameFormat::BorderStyle_Solid);
        format.setBorderBrush(QColor(0xa0, 0xa0, 0xa0));
        format.setBorderCollapse(true);
        format.setCellPadding(3);
        format.setCellSpacing(0);
        format.setWidth(QTextLength(QTextLength::PercentageLength, 100));
        QVector<QTextLength> columns;
        for (const int width : widths) {
            columns << QTextLength(QTextLength::PercentageLength, width);
        }
        format.setColumnWidthConstraints(columns);
        QTextTable* table = cursor_.insertTable(static_cast<int>(rows.size()),
                                                static_cast<int>(widths.size()), format);
        for (std::size_t row = 0; row < rows.size(); ++row) {
            for (std::size_t column = 0; column < rows[row].size(); ++column) {
                QTextCharFormat look;
                look.setForeground(column == 0 ? QColor(0x40, 0x40, 0x40) : QColor(Qt::black));
                table->cellAt(static_cast<int>(row), static_cast<int>(column))
                    .firstCursorPosition()
                    .insertText(rows[row][column], look);
            }
        }
        cursor_.movePosition(QTextCursor::End);
    }

private:
    void addLine(const QString& text, int points, bool bold, int above, int below)
    {
        QTextBlockFormat block;
        block.setTopMargin(above);
        block.setBottomMargin(below);
        QTextCharFormat look;
        look.setFontPointSize(points);
        look.setFontWeight(bold ? QFont::Bold : QFont::Normal);
        cursor_.movePosition(QTextCursor::End);
        if (begun_) {
            cursor_.insertBlock(block, look);
        } else {
            cursor_.setBlockFormat(block);
        }
        cursor_.insertText(text, look);
        begun_ = true;
    }

    QTextCursor cursor_;
    bool begun_ = false;
};

void addAmounts(CertificateSheet& sheet, const VerifiedOutput& verified)
{
    const std::pair<const char*, const verification::Amount&> kinds[] = {
        {"Outline entries", verified.amounts.outlineEntries},
        {"Links", verified.amounts.links},
        {"Form fields", verified.amounts.fields},
        {"Signatures", verified.amounts.signatures},
        {"Attachments", verified.amounts.attachments}};
    std::vector<std::vector<QString>> rows = {
        {QString(), QStringLiteral("before"), QStringLiteral("after"), QStringLiteral("gone")}};
    for (const auto& [name, amount] : kinds) {
        rows.push_back({QLatin1String(name), textOf(grouped(amount.before)),
                        textOf(grouped(amount.after)),
                        textOf(grouped(amount.before - std::min(amount.before, amount.after)))});
    }
    sheet.addCells(rows, {40, 20, 20, 20});
}

void addSentences(CertificateSheet& sheet, const char* heading,
                  const std::vector<std::string>& sentences)
{
    if (sentences.empty()) {
        return;
    }
    sheet.addHeading(QLatin1String(heading));
    for (std::size_t i = 0; i < std::min(sentences.size(), mostSentences); ++i) {
        sheet.addParagraph(foreign(sentences[i], 400));
    }
    if (sentences.size() > mostSentences) {
        sheet.addParagraph(QStringLiteral("and %1 more").arg(sentences.size() - mostSentences));
    }
}

std::vector<std::string> sentencesOf(const DocumentReport& report)
{
    std::vector<std::string> sentences = withRepairs(report.warnings, report.repairs);
    for (const PageLoss& loss : report.losses) {
        sentences.push_back("lost of page " + std::to_string(loss.page) + ": " + loss.what);
    }
    return sentences;
}

void fill(QTextDocument& document, const CertifiedRemoval& removal)
{
    const DocumentReport& report = removal.report;
    const std::size_t gone = report.pagesRemoved ? report.pagesRemoved->size() : 0;
    CertificateSheet sheet(document);
    sheet.addTitle(QStringLiteral("Certificate of a removal of pages"));
    sheet.addParagraph(
        QStringLiteral("Vantora " VANTORA_VERSION
                       " made the document after from the document before, and held both against "
                       "each other with a reader that shares no code with what removes pages."));
    sheet.addHeading(QStringLiteral("Document before"));
    sheet.addTable({{"Name", fileName(report.input, "standard input")},
                    {"Size", bytesText(report.bytesBefore)},
                    {"SHA-256", textOf(report.inputSha256)},
                    {"Pages", countText(report.pagesBefore)}});
    sheet.addHeading(QStringLiteral("Document after"));
    sheet.addTable({{"Name", fileName(report.output, "standard output")},
                    {"Size", bytesText(report.bytesAfter)},
                    {"SHA-256", textOf(report.outputSha256)},
                    {"Pages", countText(report.pagesAfter)}});
    sheet.addHeading(QStringLiteral("Removed"));
    sheet.addTable({{"Pages", countText(static_cast<int>(gone))},
                    {"Which", removedText(report)},
                    {"Labels", labelsText(report.verified->labels)}});
    sheet.addParagraph(QString());
    addAmounts(sheet, *report.verified);
    sheet.addHeading(QStringLiteral("Verification"));
    sheet.addTable(
        {{"Found", QStringLiteral("nothing")},
         {"Looked for", textOf(counted(report.verified->lookedFor, "thing", "things") +
                               " of removed pages, in every object of the document after")},
         {"Compared", QStringLiteral("content, text, picture at 50 dpi, size, label, links and "
                                     "fields of each page that is left, and what belongs to the "
                                     "document")}});
    addSentences(sheet, "What could not be told", report.verified->notTold);
    addSentences(sheet, "Remarks", sentencesOf(report));
    sheet.addHeading(QStringLiteral("How"));
    sheet.addTable({{"Command", foreign(removal.command)},
                    {"Time", textOf(removal.time)},
                    {"Program", QStringLiteral("vantora " VANTORA_VERSION)}});
    sheet.addParagraph(QString());
    sheet.addParagraph(
        QStringLiteral("Whether a file is one of these: sha256sum FILE prints its SHA-256. To "
                       "verify again: vantora verify BEFORE AFTER --pages RANGE."));
}

} // namespace

std::string certificatePdf(const CertifiedRemoval& removal)
{
    QBuffer bytes;
    bytes.open(QIODevice::WriteOnly);
    {
        QPdfWriter writer(&bytes);
        writer.setPdfVersion(QPagedPaintDevice::PdfVersion_A1b);
        writer.setPageSize(QPageSize(QPageSize::A4));
        writer.setTitle(QStringLiteral("Certificate of a removal of pages"));
        writer.setCreator(QStringLiteral("vantora " VANTORA_VERSION));
        QTextDocument document;
        CertifiedRemoval whole = removal;
        if (!whole.report.verified) {
            whole.report.verified.emplace();
        }
        fill(document, whole);
        document.print(&writer);
    }
    return bytes.data().toStdString();
}

} // namespace vantora::cli
