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
#include <QRegularExpression>
#include <QSlider>
#include <QTabWidget>

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

// Of what an assistive technology finds from here on, the names with a letter in brackets.
QStringList namesWithMnemonics(QAccessibleInterface* from) {
    static const QRegularExpression letterInBrackets(QStringLiteral("\\([A-Z]\\)"));
    QStringList found;
    if (const QString name = from->text(QAccessible::Name); name.contains(letterInBrackets))
        found << name;
    for (int child = 0; child < from->childCount(); ++child)
        if (QAccessibleInterface* each = from->child(child))
            found << namesWithMnemonics(each);
    return found;
}
QStringList namesWithMnemonics(QWidget& from) {
    return namesWithMnemonics(QAccessible::queryAccessibleInterface(&from));
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
            window.dialog().findChild<QPushButton*>("printButton")->click();
            window.dialog().findChild<QPushButton*>("defaultsButton")->click();
            window.dialog().undo();
            window.open(WindowUnderTest::General);
            page = window.dialog().findChild<QTabWidget*>("tabs")->currentIndex();
            window.dialog().close();
            static_cast<QDialog&>(alert).accept();
        }});
        chooseBestQuality(window);
        QCOMPARE(window.answered(), 1);
        QCOMPARE(page, static_cast<int>(WindowUnderTest::PrintSetting));
        QCOMPARE(window.marked("CVResolution"), QString("Best"));
        QVERIFY(window.dialog().isVisible());
        QVERIFY(window.ticket().isEmpty());
    }

    void whatTheUserDoesWhileAnAlertWaitsIsDoneAfterItsAnswer() {
        WindowUnderTest window;
        window.open(WindowUnderTest::ColorSetting);
        window.click("optionButton");
        window.click("colorEnhanceButton");
        auto* slider = window.dialog().findChild<QSlider*>("redSlider");
        QString marked;
        int shown = -1, red = -1;
        window.answer({[&](QWidget& alert) {
            window.widget<QComboBox>("monoColorPopup").setCurrentIndex(1);
            emit window.widget<QComboBox>("monoColorPopup").activated(1);
            slider->setValue(7);
            marked = window.marked("CVMonoColor");
            shown = window.widget<QComboBox>("monoColorPopup").currentIndex();
            red = slider->value();
            static_cast<QDialog&>(alert).accept();
        }});
        window.open(WindowUnderTest::PrintSetting);
        const QString before = window.marked("CVMonoColor");
        chooseBestQuality(window);
        QCOMPARE(marked, before);
        QCOMPARE(shown, 0);
        QCOMPARE(red, 0);
        QVERIFY(window.marked("CVMonoColor") != before);
        QCOMPARE(window.widget<QComboBox>("monoColorPopup").currentIndex(), 1);
        QCOMPARE(slider->value(), 7);
    }

    void aSecondAlertAndANotificationWhileAnAlertWaitsAreHarmless() {
        WindowUnderTest window;
        toolkit::AlertAnswer second{.button = -1};
        QTimer answersTheSecond; // the window's own timer rests while it answers the first
        window.answer({[&](QWidget& first) {
            QObject::connect(&answersTheSecond, &QTimer::timeout, &first, [&] {
                QWidget* modal = QApplication::activeModalWidget();
                if (modal != nullptr && modal != &first)
                    QTest::keyClick(modal, Qt::Key_Return);
            });
            answersTheSecond.start(10);
            window.session().setPaper(window.session().paperForPageSize("Letter"), true);
            toolkit::Alert alert;
            alert.messageText = "A second alert";
            alert.buttons = {{.key = "OK", .text = "OK"}};
            second = window.session().runModalAlert(alert);
            static_cast<QDialog&>(first).accept();
        }});
        chooseBestQuality(window);
        QCOMPARE(second.button, 0);
        QCOMPARE(window.marked("PageSize"), QString("Letter"));
        QCOMPARE(window.marked("CVResolution"), QString("Best"));
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

    void namesForAssistiveTechnologyBearNoMnemonics() {
        WindowUnderTest window({.languages = {"ja"}, .choices = {{"CVMediaType", "Glossy"}}});
        for (const auto page : {WindowUnderTest::General, WindowUnderTest::PrintSetting, WindowUnderTest::ColorSetting,
                                WindowUnderTest::Summary}) {
            window.open(page);
            QCOMPARE(namesWithMnemonics(window.dialog()).join(u' '), QString());
        }
        QVERIFY(window.widget<QPushButton>("printButton").text().contains(u'&'));
        QStringList found, pictures;
        const auto look = [&](QWidget& alert) {
            found << namesWithMnemonics(alert);
            for (const auto* label : alert.findChildren<QLabel*>())
                if (!label->pixmap().isNull())
                    pictures << label->accessibleName();
            QTest::keyClick(&alert, Qt::Key_Return);
        };
        window.open(WindowUnderTest::PrintSetting);
        window.answer({look, look});
        window.pick("resolutionPopup", window.widget<QComboBox>("resolutionPopup").count() - 1);
        window.click("printButton");
        QCOMPARE(window.answered(), 2);
        QCOMPARE(found.join(u' '), QString());
        QCOMPARE(pictures.size(), qsizetype{2});
        QVERIFY(!pictures.contains(QString()));
    }

    void picturesOfAlertsAreCalledByTheirTexts() {
        WindowUnderTest window;
        QString text, alertsPicture, instruction, windowsPicture;
        window.answer({[&](QWidget& alert) {
                           text = dynamic_cast<QMessageBox&>(alert).text();
                           alertsPicture = alert.findChild<QLabel*>("qt_msgboxex_icon_label")->accessibleName();
                           QTest::keyClick(&alert, Qt::Key_Return);
                       },
                       [&](QWidget& alert) {
                           instruction = alert.findChild<QLabel*>("normalPaperInstructionLabel")->text();
                           windowsPicture = alert.findChild<QLabel*>("normalPaperAlertImageView")->accessibleName();
                           QTest::keyClick(&alert, Qt::Key_Return);
                       }});
        chooseBestQuality(window);
        window.click("printButton");
        QCOMPARE(window.answered(), 2);
        QVERIFY(!text.isEmpty() && !instruction.isEmpty());
        QCOMPARE(alertsPicture, text);
        QVERIFY2(windowsPicture.contains(instruction), qPrintable(windowsPicture));
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

    void undoTakesTheWholeStepBack() {
        WindowUnderTest window;
        window.open(WindowUnderTest::PrintSetting);
        const auto before = window.session().description().marks();
        const QString media = window.widget<QComboBox>("mediaTypePopup").currentText();
        QVERIFY(!window.widget<QPushButton>("undoButton").isVisible());
        window.pick("mediaTypePopup", kGlossy);
        QVERIFY(window.session().description().marks() != before);
        window.click("undoButton");
        QVERIFY(window.session().description().marks() == before);
        QCOMPARE(window.widget<QComboBox>("mediaTypePopup").currentText(), media);
        QCOMPARE(window.widget<QComboBox>("resolutionPopup").currentText(), QString("Standard"));
        QCOMPARE(window.dialog().message(), QString("The step has been undone."));
        QVERIFY(!window.widget<QPushButton>("undoButton").isVisible());
    }

    void undoBringsThePaperBack() {
        WindowUnderTest window;
        window.open(WindowUnderTest::PrintSetting);
        window.open(WindowUnderTest::General);
        const QString before = window.widget<QComboBox>("paperList").currentText();
        window.pick("paperList", "Envelope #10");
        QVERIFY2(window.dialog().message().contains("Paper Thickness is now Envelope"),
                 qPrintable(window.dialog().message()));
        QTest::keyClick(&window.dialog(), Qt::Key_Z, Qt::ControlModifier);
        QVERIFY2(window.widget<QComboBox>("paperList").currentText() == before, qPrintable(window.dialog().message()));
        QCOMPARE(window.marked("CVColorPaperThick"), QString("Regular"));
        QCOMPARE(window.marked("PageSize"), QString("A4"));
    }

    void aStepWithoutConsequencesOffersNoUndo() {
        WindowUnderTest window;
        window.open(WindowUnderTest::PrintSetting);
        window.pick("monoColorPopup", 1);
        QVERIFY(window.dialog().message().isEmpty());
        QVERIFY(!window.widget<QPushButton>("undoButton").isVisible());
        window.dialog().undo();
        QCOMPARE(window.widget<QComboBox>("monoColorPopup").currentIndex(), 1);
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
