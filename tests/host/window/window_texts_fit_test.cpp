// No text is cut, in any language and size.

#include "window_under_test.h"

#include <QAbstractButton>
#include <QApplication>
#include <QComboBox>
#include <QLabel>
#include <QSpinBox>
#include <QTabBar>

using tests::WindowUnderTest;

namespace {

// What shows a text that has to be seen whole.
bool showsText(const QWidget& widget) {
    const auto* label = qobject_cast<const QLabel*>(&widget);
    if (label != nullptr)
        return !label->text().isEmpty();
    return qobject_cast<const QAbstractButton*>(&widget) != nullptr ||
           qobject_cast<const QComboBox*>(&widget) != nullptr ||
           qobject_cast<const QAbstractSpinBox*>(&widget) != nullptr;
}

QString whatIsCut(const QWidget& widget) {
    const auto* label = qobject_cast<const QLabel*>(&widget);
    const bool wraps = label != nullptr && label->wordWrap();
    const QSize needed(wraps ? widget.width() : widget.sizeHint().width(),
                       wraps ? widget.heightForWidth(widget.width()) : widget.sizeHint().height());
    return needed.width() <= widget.width() && needed.height() <= widget.height()
               ? QString()
               : QStringLiteral("%1 needs %2x%3, has %4x%5")
                     .arg(widget.objectName())
                     .arg(needed.width())
                     .arg(needed.height())
                     .arg(widget.width())
                     .arg(widget.height());
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
        QFont font = QApplication::font();
        font.setPointSize(points);
        QApplication::setFont(font);
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
            QTest::qWait(20);
            QVERIFY(window.dialog().height() >= window.dialog().minimumSizeHint().height());
            for (const QWidget* widget : window.dialog().findChildren<QWidget*>())
                if (widget->isVisible() && showsText(*widget))
                    if (const QString what = whatIsCut(*widget); !what.isEmpty())
                        cut << what;
        }
        QVERIFY2(cut.isEmpty(), qPrintable(cut.join('\n')));
    }

    void theWindowFitsItsFontWhenThatChanges() {
        QFont font = QApplication::font();
        font.setPointSize(8);
        QApplication::setFont(font);
        WindowUnderTest window;
        window.open(WindowUnderTest::ColorSetting);
        font.setPointSize(14);
        QApplication::setFont(font);
        QTest::qWait(50);
        for (const QWidget* widget : window.page().findChildren<QWidget*>())
            if (widget->isVisible() && showsText(*widget))
                QVERIFY2(whatIsCut(*widget).isEmpty(), qPrintable(whatIsCut(*widget)));
    }
};

QTEST_MAIN(WindowTextsFitTest)
#include "window_texts_fit_test.moc"
