// Alerts, alert windows, refusals and what the user is told.

#include "window_under_test.h"

#include <QAccessible>
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QMenu>
#include <QMessageBox>
#include <QPushButton>

using tests::WindowUnderTest;

namespace {

constexpr const char* kBundle = "com.corvane.print.pde.CVInkQuality12";
constexpr const char* kGlossy = "Other Glossy Paper";
constexpr const char* kTray2 = "Tray 2";

// Glossy paper in its best quality, of which the panel warns.
void chooseBestQuality(WindowUnderTest& window) {
    window.open(WindowUnderTest::PrintSetting);
    window.pick("mediaTypePopup", kGlossy);
    auto& box = window.widget<QComboBox>("resolutionPopup");
    window.pick("resolutionPopup", box.count() - 1);
}

bool isSuppressed(WindowUnderTest& window) {
    const auto domain = window.defaults().persistentDomainForName(kBundle).value_or(toolkit::ValueMap());
    return std::ranges::any_of(domain, [](const auto& entry) { return entry.second == toolkit::Value(false); });
}

} // namespace

class WindowAlertsTest : public QObject {
    Q_OBJECT

private slots:
    void anAlertShowsItsTextsAndItsBoxAndIsModalToTheWindow() {
        WindowUnderTest window;
        QString text, informative;
        bool hasBox = false;
        Qt::WindowModality modality = Qt::NonModal;
        QWidget* parent = nullptr;
        window.answer({[&](QWidget& alert) {
            auto& box = dynamic_cast<QMessageBox&>(alert);
            text = box.text();
            informative = box.informativeText();
            hasBox = box.checkBox() != nullptr;
            modality = box.windowModality();
            parent = box.parentWidget();
            QTest::keyClick(&box, Qt::Key_Return);
        }});
        chooseBestQuality(window);
        QCOMPARE(window.answered(), 1);
        QVERIFY(!text.isEmpty() && !informative.isEmpty() && text != "Best Alert");
        QVERIFY(hasBox);
        QCOMPARE(modality, Qt::WindowModal);
        QCOMPARE(parent, &window.dialog());
    }

    void theSuppressionBoxIsKeptAndTheMenuForgetsIt() {
        WindowUnderTest window;
        window.answer({[](QWidget& alert) {
            auto& box = dynamic_cast<QMessageBox&>(alert);
            box.checkBox()->click();
            QTest::keyClick(&box, Qt::Key_Return);
        }});
        chooseBestQuality(window);
        QVERIFY(isSuppressed(window));
        window.dialog().findChild<QAction*>("showWarningsAction")->trigger();
        QVERIFY(!isSuppressed(window));
        QCOMPARE(window.dialog().message(), QString("All warnings are shown again."));
    }

    void whileAnAlertWaitsTheWindowsControlsAreHarmless() {
        WindowUnderTest window;
        QString marked;
        int page = -1;
        window.answer({[&](QWidget& alert) {
            window.widget<QComboBox>("monoColorPopup").setCurrentIndex(1);
            emit window.widget<QComboBox>("monoColorPopup").activated(1);
            window.dialog().findChild<QPushButton*>("printButton")->click();
            window.open(WindowUnderTest::General);
            page = window.dialog().findChild<QTabWidget*>("tabs")->currentIndex();
            marked = window.marked("CVMonoColor");
            window.dialog().reject();
            static_cast<QDialog&>(alert).accept();
        }});
        window.open(WindowUnderTest::PrintSetting);
        const QString before = window.marked("CVMonoColor");
        chooseBestQuality(window);
        QCOMPARE(marked, before);
        QCOMPARE(page, static_cast<int>(WindowUnderTest::PrintSetting));
        QCOMPARE(window.widget<QComboBox>("monoColorPopup").currentIndex(), 0);
        QVERIFY(window.dialog().isVisible());
        QVERIFY(window.ticket().isEmpty());
    }

    void theAlertBeforePrintingShowsItsPictureAndIsAnsweredByItsButton() {
        WindowUnderTest window;
        QString instruction, picture;
        window.answer({[&](QWidget& alert) {
            instruction = alert.findChild<QLabel*>("normalPaperInstructionLabel")->text();
            picture = alert.findChild<QLabel*>("normalPaperAlertImageView")->pixmap().isNull() ? "none" : "shown";
            alert.findChild<QPushButton*>("normalPaperAlertOKButton")->click();
        }});
        window.click("printButton");
        QVERIFY(!instruction.isEmpty());
        QCOMPARE(picture, QString("shown"));
        QVERIFY(!window.ticket().isEmpty());
    }

    void escapeIsCancelInAnAlertWindow() {
        WindowUnderTest window;
        window.answer({[&](QWidget& alert) { QTest::keyClick(&alert, Qt::Key_Escape); }});
        window.click("printButton");
        QCOMPARE(window.answered(), 1);
        QVERIFY(window.dialog().isVisible());
        QVERIFY(window.ticket().isEmpty());
    }

    void returnIsTheDefaultButtonOfAnAlertWindow() {
        WindowUnderTest window;
        window.answer({[&](QWidget& alert) { QTest::keyClick(&alert, Qt::Key_Return); }});
        window.click("printButton");
        QVERIFY(!window.ticket().isEmpty());
    }

    void theSuppressionBoxOfAnAlertWindowIsKept() {
        WindowUnderTest window;
        window.answer({[&](QWidget& alert) {
            alert.findChild<QCheckBox*>("suppressionButton")->click();
            QTest::keyClick(&alert, Qt::Key_Return);
        }});
        window.click("printButton");
        QVERIFY(isSuppressed(window));
    }

    void aChangeByRulesIsToldWithItsCause() {
        WindowUnderTest window;
        window.open(WindowUnderTest::PrintSetting);
        window.pick("mediaTypePopup", kGlossy);
        const QString message = window.dialog().message();
        QVERIFY2(message.startsWith("Because you chose Media Type: Other Glossy Paper: "), qPrintable(message));
        QVERIFY2(message.contains("Print Quality is now Photo"), qPrintable(message));
        QVERIFY2(!message.contains("Media Type is now"), qPrintable(message));
    }

    void whatIsToldIsToldInTheUsersLanguage() {
        WindowUnderTest window({.languages = {"ja"}});
        window.open(WindowUnderTest::PrintSetting);
        window.pick("mediaTypePopup", 4);
        QVERIFY2(window.dialog().message().contains("を選んだため"), qPrintable(window.dialog().message()));
    }

    void aRefusedChoiceGoesBackAndTheReasonIsTold() {
        WindowUnderTest window({.choices = {{"CVInputSlot", "Tray2"}}});
        window.open(WindowUnderTest::PrintSetting);
        auto& media = window.widget<QComboBox>("mediaTypePopup");
        const QString before = media.currentText();
        window.pick("mediaTypePopup", kGlossy);
        QCOMPARE(media.currentText(), before);
        QCOMPARE(window.marked("CVMediaType"), QString("Plain"));
        QVERIFY2(window.dialog().message().contains("cannot be used together with") &&
                     window.dialog().message().contains(kTray2),
                 qPrintable(window.dialog().message()));
    }

    void whatIsToldReachesAssistiveTechnology() {
        WindowUnderTest window;
        window.open(WindowUnderTest::PrintSetting);
        window.pick("mediaTypePopup", kGlossy);
        auto& line = window.widget<QLabel>("messageLine");
        QVERIFY(line.isVisible());
        QAccessibleInterface* interface = QAccessible::queryAccessibleInterface(&line);
        QVERIFY(interface != nullptr);
        QCOMPARE(interface->text(QAccessible::Name), window.dialog().message());
        QVERIFY(!interface->state().invisible);
    }
};

QTEST_MAIN(WindowAlertsTest)
#include "window_alerts_test.moc"
