// The host's own pages, printing, and the keyboard.

#include "window_under_test.h"

#include "host/window/help_viewer.h"

#include <QApplication>
#include <QClipboard>
#include <QComboBox>
#include <QDoubleSpinBox>
#include <QJsonDocument>
#include <QJsonObject>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QRadioButton>
#include <QSpinBox>
#include <QTextBrowser>
#include <QTreeWidget>

#include <thread>

using tests::WindowUnderTest;

namespace {

QJsonObject ticketOptions(const WindowUnderTest& window) {
    return QJsonDocument::fromJson(window.ticket()).object()["options"].toObject();
}

void agree(QWidget& alert) {
    static_cast<QDialog&>(alert).findChild<QPushButton*>("normalPaperAlertOKButton")->click();
}

void closeMessage(QWidget& alert) {
    static_cast<QDialog&>(alert).accept();
}

QTreeWidgetItem* summaryItem(WindowUnderTest& window, const QString& title) {
    const auto found = window.widget<QTreeWidget>("summaryTable").findItems(title, Qt::MatchExactly);
    return found.isEmpty() ? nullptr : found.front();
}

} // namespace

class WindowDialogTest : public QObject {
    Q_OBJECT

private slots:
    void theChosenPaperGoesIntoTheJob() {
        WindowUnderTest window;
        window.pick("paperList", "Letter");
        QCOMPARE(window.marked("PageSize"), QString("Letter"));
        window.answer({agree});
        window.click("printButton");
        QCOMPARE(ticketOptions(window)["PageSize"].toString(), QString("Letter"));
    }

    void aFreePaperGoesIntoTheJobInPoints() {
        WindowUnderTest window;
        window.pick("paperList", window.widget<QComboBox>("paperList").count() - 1);
        window.pick("freeUnitList", 2);
        auto& width = window.widget<QDoubleSpinBox>("freeWidthField");
        QVERIFY(width.isVisible());
        QCOMPARE(width.minimum(), 252.0);
        QCOMPARE(width.maximum(), 900.0);
        width.setFocus();
        width.selectAll();
        QTest::keyClicks(&width, "300");
        QTest::keyClick(&width, Qt::Key_Return);
        auto& height = window.widget<QDoubleSpinBox>("freeHeightField");
        height.setFocus();
        height.selectAll();
        QTest::keyClicks(&height, "500");
        window.answer({[](QWidget& alert) { alert.findChild<QPushButton*>("customPaperAlertOKButton")->click(); }});
        window.click("printButton"); // commits what was typed last
        QCOMPARE(ticketOptions(window)["PageSize"].toString(), QString("Custom.300x500"));
    }

    void twoSidedPrintingIsMarked() {
        WindowUnderTest window;
        window.pick("twoSidedList", 1);
        QCOMPARE(window.marked("Duplex"), QString("DuplexNoTumble"));
    }

    void faxOutputDisablesThePanels() {
        WindowUnderTest window;
        window.open(WindowUnderTest::PrintSetting);
        QVERIFY(window.widget<QComboBox>("mediaTypePopup").isEnabled());
        window.open(WindowUnderTest::General);
        window.pick("outputList", "Fax");
        window.open(WindowUnderTest::PrintSetting);
        auto& media = window.widget<QComboBox>("mediaTypePopup");
        QVERIFY(!media.isEnabled());
        QVERIFY(!media.accessibleDescription().isEmpty());
    }

    void theApplicationsColorMatchingIsAPrintSetting() {
        WindowUnderTest window;
        window.pick("colorMatchingList", 1);
        window.answer({agree});
        window.click("printButton");
        QCOMPARE(ticketOptions(window)["AP_ColorMatchingMode"].toString(), QString("AP_ApplicationColorMatching"));
    }

    void aPrinterWithoutCustomColorMatchingOffersNone() {
        WindowUnderTest window({.model = "corvane-office"});
        QVERIFY(!window.widget<QComboBox>("colorMatchingList").isVisible());
        WindowUnderTest other;
        QVERIFY(other.widget<QComboBox>("colorMatchingList").isVisible());
    }

    void copiesAndPagesGoIntoTheJob() {
        WindowUnderTest window;
        window.widget<QSpinBox>("copiesField").setValue(3);
        window.widget<QLineEdit>("pagesField").setText("1-4, 7");
        window.answer({agree});
        window.click("printButton");
        const QJsonObject ticket = QJsonDocument::fromJson(window.ticket()).object();
        QCOMPARE(ticket["copies"].toInt(), 3);
        QCOMPARE(ticket["options"].toObject()["page-ranges"].toString(), QString("1-4,7"));
    }

    void pagesThatAreNoneAreToldAndNothingIsPrinted() {
        WindowUnderTest window;
        window.widget<QLineEdit>("pagesField").setText("four");
        window.click("printButton");
        QVERIFY(window.dialog().message().startsWith("Pages are numbers"));
        QVERIFY(window.dialog().isVisible());
    }

    void printingToAFolderEndsTheDialog() {
        WindowUnderTest window;
        window.answer({agree});
        window.click("printButton");
        QCOMPARE(window.dialog().result(), static_cast<int>(QDialog::Accepted));
        QVERIFY(!window.dialog().isVisible());
        QCOMPARE(window.dialog().printed().size(), std::size_t{1});
        QVERIFY(QFile::exists(window.folder() + "/picture.png"));
        QCOMPARE(ticketOptions(window)["CVMediaType"].toString(), QString("Plain"));
    }

    void aFailureIsToldAndTheChoicesAreKept() {
        bool fails = true;
        WindowUnderTest window({.submission = [&](const auto& destination, const auto& request, const auto& progress) {
            return fails ? host::JobResult{.error = "The folder is on fire: put it out."}
                         : host::submit(destination, request, progress);
        }});
        QString told;
        window.pick("paperList", "Letter");
        window.answer({agree,
                       [&](QWidget& alert) {
                           told = dynamic_cast<QMessageBox&>(alert).informativeText();
                           closeMessage(alert);
                       },
                       agree});
        window.click("printButton");
        QVERIFY(told.contains("The folder is on fire: put it out."));
        QVERIFY(window.dialog().isVisible());
        QCOMPARE(window.widget<QComboBox>("paperList").currentText(), QString("Letter"));
        fails = false;
        window.click("printButton");
        QCOMPARE(ticketOptions(window)["PageSize"].toString(), QString("Letter"));
    }

    void sendingCanBeCancelled() {
        WindowUnderTest window({.submission = [](const auto&, const auto&, const host::JobProgress& progress) {
            while (progress(1, 2))
                std::this_thread::yield();
            return host::JobResult{.error = "given up"};
        }});
        window.answer(
            {agree, [](QWidget& progress) { progress.findChild<QPushButton*>("cancelPrintingButton")->click(); }});
        window.click("printButton");
        QCOMPARE(window.dialog().message(), QString("Printing was cancelled."));
        QVERIFY(window.dialog().isVisible());
    }

    void sendingLeavesTheWindowsThread() {
        const std::thread::id own = std::this_thread::get_id();
        std::thread::id sender = own;
        WindowUnderTest window({.submission = [&](const auto& destination, const auto& request, const auto& progress) {
            sender = std::this_thread::get_id();
            return host::submit(destination, request, progress);
        }});
        window.answer({agree});
        window.click("printButton");
        QVERIFY(sender != own);
    }

    void withoutADocumentNothingIsPrinted() {
        WindowUnderTest window({.hasDocument = false});
        window.click("printButton");
        QCOMPARE(window.dialog().message(), QString("There is no document to print."));
    }

    void theSummaryListsThePanelsLinesAndMarksWhatDiffers() {
        WindowUnderTest window;
        window.open(WindowUnderTest::PrintSetting);
        window.pick("monoColorPopup", 1);
        window.open(WindowUnderTest::Summary);
        QTreeWidgetItem* mode = summaryItem(window, "Color Mode");
        QTreeWidgetItem* media = summaryItem(window, "Media Type");
        QVERIFY(mode != nullptr && media != nullptr);
        QVERIFY(!mode->text(2).isEmpty() && mode->font(0).bold());
        QVERIFY(media->text(2).isEmpty() && !media->font(0).bold());
        QCOMPARE(media->text(1), QString("Plain Paper"));
    }

    void theSummaryListsAdjustments() {
        WindowUnderTest window;
        window.open(WindowUnderTest::ColorSetting);
        window.click("optionButton");
        window.click("colorEnhanceButton");
        window.widget<QSpinBox>("redField").setValue(5);
        window.open(WindowUnderTest::Summary);
        QTreeWidgetItem* red = summaryItem(window, "Red");
        QVERIFY(red != nullptr);
        QCOMPARE(red->text(1), QString("5"));
        QVERIFY(!red->text(2).isEmpty());
        QVERIFY(summaryItem(window, "Blue")->text(2).isEmpty());
    }

    void theSummaryIsCopiedAsText() {
        WindowUnderTest window;
        window.open(WindowUnderTest::Summary);
        window.click("copyButton");
        QVERIFY(QApplication::clipboard()->text().contains("Media Type: Plain Paper\n"));
    }

    void whatIsChosenStaysWhenAPageIsLeft() {
        WindowUnderTest window;
        window.open(WindowUnderTest::ColorSetting);
        window.click("optionButton");
        window.click("colorEnhanceButton");
        window.widget<QSpinBox>("redField").setValue(5);
        window.open(WindowUnderTest::PrintSetting);
        window.open(WindowUnderTest::ColorSetting);
        QCOMPARE(window.widget<QSpinBox>("redField").value(), 5);
    }

    void helpOpensThePanelsPage() {
        WindowUnderTest window;
        window.open(WindowUnderTest::ColorSetting);
        window.click("helpButton");
        auto* viewer = window.dialog().findChild<QTextBrowser*>();
        QVERIFY(viewer != nullptr && viewer->isVisible());
        QCOMPARE(viewer->documentTitle(), QString("Color Setting"));
    }

    void helpKeyOpensThePanelsPageInTheUsersLanguage() {
        WindowUnderTest window({.languages = {"ja"}});
        window.open(WindowUnderTest::PrintSetting);
        QTest::keyClick(&window.dialog(), Qt::Key_F1);
        auto* viewer = window.dialog().findChild<QTextBrowser*>();
        QVERIFY(viewer != nullptr && viewer->source().path().contains("/ja/"));
    }

    void returnPrints() {
        WindowUnderTest window;
        window.answer({agree});
        window.widget<QComboBox>("paperList").setFocus();
        QTest::keyClick(&window.widget<QComboBox>("paperList"), Qt::Key_Return);
        QVERIFY(!window.ticket().isEmpty());
    }

    void escapeCancels() {
        WindowUnderTest window;
        QTest::keyClick(&window.dialog(), Qt::Key_Escape);
        QVERIFY(!window.dialog().isVisible());
        QCOMPARE(window.dialog().result(), static_cast<int>(QDialog::Rejected));
    }

    void theTabKeyReachesEveryControlOfAPage() {
        WindowUnderTest window;
        for (const auto page :
             {WindowUnderTest::General, WindowUnderTest::PrintSetting, WindowUnderTest::ColorSetting}) {
            window.open(page);
            QSet<QWidget*> wanted, reached;
            for (QWidget* widget : window.page().findChildren<QWidget*>())
                if (widget->isVisible() && widget->isEnabled() &&
                    (widget->focusPolicy() & Qt::TabFocus) == Qt::TabFocus && widget->focusProxy() == nullptr &&
                    qobject_cast<QRadioButton*>(widget) == nullptr)
                    wanted << widget;
            window.dialog().setFocus();
            for (int step = 0; step < 60; ++step) {
                QTest::keyClick(QApplication::focusWidget() == nullptr ? &window.dialog() : QApplication::focusWidget(),
                                Qt::Key_Tab);
                reached << QApplication::focusWidget();
            }
            for (QWidget* widget : wanted)
                QVERIFY2(reached.contains(widget), qPrintable(widget->objectName()));
        }
    }

    void anotherPrinterKeepsWhatItHasToo() {
        WindowUnderTest window;
        QCOMPARE(window.widget<QComboBox>("printerList").count(), 1);
        window.pick("paperList", "Letter");
        window.pick("printerList", 0); // the same printer anew
        QCOMPARE(window.marked("PageSize"), QString("Letter"));
        QCOMPARE(window.widget<QComboBox>("paperList").currentText(), QString("Letter"));
    }
};

QTEST_MAIN(WindowDialogTest)
#include "window_dialog_test.moc"
