#include "tests/VantoraApp/widgets/PickedFonts.h"

#include <QtCore/QProcess>

#include <gtest/gtest.h>

namespace {

TEST(SystemFonts, AreTheFamiliesThatFontconfigListsSortedAndOnceEach)
{
    QProcess list;
    list.start("fc-list", {"--format", "%{family[0]}\\n"});
    ASSERT_TRUE(list.waitForFinished(-1));
    QStringList families =
        QString::fromUtf8(list.readAllStandardOutput()).split('\n', Qt::SkipEmptyParts);
    families.removeDuplicates();
    families.sort();
    ASSERT_TRUE(families.contains("DejaVu Sans"));

    const LoadedLibrary library(PDF_LIBRARY);
    EXPECT_EQ(pickedFonts(), families);
}

} // namespace
