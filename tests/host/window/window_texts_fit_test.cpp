// No text is cut, and nothing overlaps, in any language and size.

#include "layout_check.h"
#include "window_under_test.h"

#include <QApplication>
#include <QComboBox>
#include <QLabel>
#include <QTreeWidget>

using tests::WindowUnderTest;

namespace {

void setPoints(int size) {
    QFont font = QApplication::font();
    font.setPointSize(size);
    QApplication::setFont(font);
}

} // namespace

class WindowTextsFitTest : public QObject {
    Q_OBJECT

private slots:
    void noTextIsCut_data() {
        QTest::addColumn<QString>("language");
        QTest::addColumn<int>("points");
        for (const char* language : {"en", "ja", "de", "fr", "es", "zh_CN"})
            for (const int points : {8, 14})
                QTest::addRow("%s %d", language, points) << language << points;
    }

    void noTextIsCut() {
        QFETCH(const QString, language);
        QFETCH(const int, points);
        setPoints(points);
        WindowUnderTest window({.languages = {language.toStdString()}});
        QStringList cut;
        for (const auto page : {WindowUnderTest::General, WindowUnderTest::PrintSetting, WindowUnderTest::ColorSetting,
                                WindowUnderTest::Summary}) {
            window.open(page);
            if (page == WindowUnderTest::General)
                window.pick("paperList", window.widget<QComboBox>("paperList").count() - 1);
            if (page == WindowUnderTest::PrintSetting)
                window.pick("mediaTypePopup", 3); // whose consequences are told
            if (page == WindowUnderTest::PrintSetting || page == WindowUnderTest::ColorSetting)
                window.click("optionButton");
            cut << tests::faultsOfLayout(window.dialog());
            QTRY_VERIFY(window.dialog().height() >= window.dialog().minimumSizeHint().height());
        }
        QVERIFY2(cut.isEmpty(), qPrintable(cut.join('\n')));
    }

    void theWindowFitsItsFontWhenThatChanges() {
        setPoints(8);
        WindowUnderTest window;
        window.open(WindowUnderTest::ColorSetting);
        setPoints(14);
        const QStringList faults = tests::faultsOfLayout(window.dialog());
        QVERIFY2(faults.isEmpty(), qPrintable(faults.join('\n')));
    }

    void thePictureOfTheDocumentIsReadAnewInItsNewSize() {
        setPoints(16);
        WindowUnderTest window;
        auto& picture = window.widget<QLabel>("documentPicture");
        QTRY_COMPARE(picture.pixmap().width(), picture.width());
        for (const int points : {9, 18}) {
            const int before = picture.width();
            setPoints(points);
            QTRY_VERIFY(picture.width() != before); // events bring the font along
            QTRY_COMPARE(picture.pixmap().width(), picture.width());
        }
    }

    void theSummaryShowsItsRowsInANewFont() {
        setPoints(9);
        WindowUnderTest window;
        window.open(WindowUnderTest::Summary);
        const auto& table = window.widget<QTreeWidget>("summaryTable");
        const auto rowHeight = [&] { return table.visualItemRect(table.topLevelItem(0)).height(); };
        const int before = rowHeight();
        setPoints(16);
        QTRY_VERIFY(rowHeight() > before); // events bring the font along
        QTRY_VERIFY(table.viewport()->height() >= 10 * rowHeight());
    }
};

QTEST_MAIN(WindowTextsFitTest)
#include "window_texts_fit_test.moc"
