#include "VantoraApp/CActionUtils.h"

#include <QtCore/QFile>
#include <QtGui/QTextBlock>
#include <QtGui/QTextDocument>
#include <QtWidgets/QTextBrowser>

#include <gtest/gtest.h>

namespace {

/// The names of the images that the document shows.
QStringList imagesIn(const QTextDocument& document)
{
    QStringList names;
    for (QTextBlock block = document.begin(); block.isValid(); block = block.next()) {
        for (auto part = block.begin(); !part.atEnd(); ++part) {
            const QTextCharFormat format = part.fragment().charFormat();
            if (format.isImageFormat())
                names.append(format.toImageFormat().name());
        }
    }
    return names;
}

TEST(HelpPage, OfDeletePagesIsShownWithItsTopicsAndImages)
{
    QTextBrowser pane;
    CActionUtils::SetTargetLabels(nullptr, &pane);
    CActionUtils::SetHelp("Action_DeletePages.html");
    const QString text = pane.toPlainText();
    for (const char* topic : {"Delete Pages", "Page range", "Links", "Bookmarks", "Form fields",
                              "Tags", "Page labels", "\u201Civ\u201D"})
        EXPECT_TRUE(text.contains(QString::fromUtf8(topic))) << topic;
    CActionUtils::SetTargetLabels(nullptr, nullptr);
    const QStringList images = imagesIn(*pane.document());
    EXPECT_EQ(images.size(), 15);
    for (const QString& image : images)
        EXPECT_TRUE(QFile::exists(image)) << qPrintable(image);
}

} // namespace
