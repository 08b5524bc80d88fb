#include <QDir>
#include <QFile>
#include <QXmlStreamReader>

#include <gtest/gtest.h>

namespace fadewell {
namespace {

TEST(TranslationsTest, EveryTextIsTranslatedAndKeepsItsPlaceholders)
{
    const QDir folder(FADEWELL_CATALOGUES);
    const auto catalogues = folder.entryInfoList({"fadewell_*.ts"});
    ASSERT_GE(catalogues.size(), 2);
    for (const auto& catalogue : catalogues) {
        QFile file(catalogue.filePath());
        ASSERT_TRUE(file.open(QFile::ReadOnly));
        QXmlStreamReader xml(&file);
        QString source;
        int texts = 0;
        while (!xml.atEnd()) {
            xml.readNext();
            if (xml.isStartElement() && xml.name() == u"source") {
                source = xml.readElementText();
            } else if (xml.isStartElement() && xml.name() == u"translation") {
                const bool isFinished = xml.attributes().value("type").isEmpty();
                const auto translation = xml.readElementText();
                EXPECT_TRUE(isFinished && !translation.isEmpty()) << source.toStdString();
                EXPECT_EQ(translation.contains("%1"), source.contains("%1"))
                    << translation.toStdString();
                ++texts;
            }
        }
        EXPECT_FALSE(xml.hasError()) << catalogue.fileName().toStdString();
        EXPECT_GT(texts, 100);
    }
}

} // namespace
} // namespace fadewell
