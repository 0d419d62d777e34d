// The host's own pages, printing, and the keyboard.

#include "window_under_test.h"

#include "host/session/program_files.h"
#include "host/window/document_facts.h"
#include "host/window/help_viewer.h"

#include <QApplication>
#include <QCheckBox>
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
#include <QSemaphore>
#include <QSpinBox>
#include <QTabWidget>
#include <QTemporaryFile>
#include <QTextBrowser>
#include <QThreadPool>
#include <QTreeWidget>

#include <atomic>
#include <cstdio>
#include <dlfcn.h>
#include <fcntl.h>
#include <filesystem>
#include <thread>
#include <unistd.h>

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

host::JobResult sentAsJobSeven(const host::Destination&, const host::DocumentsJob&, const host::JobProgress& progress) {
    return progress(1, 1) ? host::JobResult{.ok = true, .jobId = 7} : host::JobResult{.error = "given up"};
}

// What hindered it when it was sent the next look at it knows better.
host::JobResult sentAsJobSevenThatWaits(const host::Destination& destination, const host::DocumentsJob& job,
                                        const host::JobProgress& progress) {
    host::JobResult sent = sentAsJobSeven(destination, job, progress);
    sent.note = "The job waits for lunch.";
    return sent;
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
        QTest::keyClicks(&window.widget<QLineEdit>("pagesField"), "2");
        QVERIFY(window.dialog().message().isEmpty());
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
        window.answer({agree});
        window.whileSending(
            [](QWidget& progress) { progress.findChild<QPushButton*>("cancelPrintingButton")->click(); });
        window.click("printButton");
        QCOMPARE(window.dialog().message(), QString("Printing was cancelled."));
        QVERIFY(window.dialog().isVisible());
    }

    void aSentJobIsFollowedUntilItPrints() {
        int looks = 0;
        WindowUnderTest window({.submission = sentAsJobSevenThatWaits, .status = [&](const auto&, const auto&) {
                                    ++looks;
                                    return host::JobStatus{.stage = looks < 2 ? host::JobStage::Waiting
                                                                              : host::JobStage::Printing};
                                }});
        window.answer({agree});
        window.click("printButton");
        QCOMPARE(looks, 2);
        QCOMPARE(window.dialog().printed().size(), std::size_t{1});
        QVERIFY(window.dialog().printed().front().note.empty());
    }

    void whatHindersASentJobIsTold() {
        QString told;
        WindowUnderTest window(
            {.languages = {"de"}, .submission = sentAsJobSevenThatWaits, .status = [](const auto&, const auto&) {
                 return host::JobStatus{
                     .stage = host::JobStage::Waiting, .isHindered = true, .hindrances = {host::Hindrance::OutOfPaper}};
             }});
        window.answer({agree, [&](QWidget& message) {
                           told = dynamic_cast<QMessageBox&>(message).informativeText();
                           closeMessage(message);
                       }});
        window.click("printButton");
        QCOMPARE(told, QString("Der Auftrag wartet, weil der Drucker kein Papier mehr hat."));
        QCOMPARE(window.dialog().result(), static_cast<int>(QDialog::Accepted));
    }

    void aSentJobThatFailsIsTold() {
        QString told;
        WindowUnderTest window({.submission = sentAsJobSeven, .status = [](const auto&, const auto&) {
                                    return host::JobStatus{.stage = host::JobStage::Failed,
                                                           .serversWords = "Filter failed"};
                                }});
        window.answer({agree, [&](QWidget& message) {
                           told = dynamic_cast<QMessageBox&>(message).informativeText();
                           closeMessage(message);
                       }});
        window.click("printButton");
        QVERIFY2(told.startsWith("The job failed (Filter failed)"), qPrintable(told));
    }

    void aSentJobThatWaitsCanBeCancelled() {
        int cancelled = 0;
        WindowUnderTest window(
            {.submission = sentAsJobSeven,
             .status = [](const auto&, const auto&) { return host::JobStatus{.stage = host::JobStage::Waiting}; },
             .cancelling =
                 [&](const auto&, const host::JobResult& job) {
                     cancelled = job.jobId;
                     return std::string();
                 }});
        window.answer({agree});
        window.whileSending([](QWidget& progress) {
            if (progress.findChild<QLabel*>("progressText")->text() == "The job waits for its turn.")
                progress.findChild<QPushButton*>("cancelPrintingButton")->click();
        });
        window.click("printButton");
        QCOMPARE(cancelled, 7);
        QCOMPARE(window.dialog().message(), QString("Printing was cancelled."));
        QVERIFY(window.dialog().isVisible());
        QVERIFY(window.dialog().printed().empty());
    }

    void aPasswordIsAskedForWhileTheJobIsSent() {
        std::vector<std::string> given;
        std::atomic<bool> isShown = false; // the progress, above which the question stands
        WindowUnderTest window({.submission = [&](const auto& destination, const auto&, const auto&) {
            for (const bool isAgain : {false, true}) {
                while (!isShown)
                    std::this_thread::yield();
                const auto answer = destination.passwords({.server = "Office", .user = "ann", .isAgain = isAgain});
                given.push_back(answer ? answer->user + ":" + answer->password : "nothing");
            }
            return host::JobResult{.ok = true};
        }});
        const auto type = [](QWidget& question) {
            QTest::keyClicks(question.findChild<QLineEdit*>("passwordField"), "a word");
            dynamic_cast<QDialog&>(question).accept();
        };
        const auto cancel = [](QWidget& question) { dynamic_cast<QDialog&>(question).reject(); };
        window.answer({agree, type, cancel});
        window.whileSending([&isShown](QWidget&) { isShown = true; });
        window.click("printButton");
        QCOMPARE(given, (std::vector<std::string>{"ann:a word", "nothing"}));
    }

    void whoGivesNoPasswordForAJobMayPrintAnew() {
        std::atomic<bool> isShown = false; // the progress, above which the question stands
        WindowUnderTest window({.submission = [&](const auto& destination, const auto&, const auto&) {
            while (!isShown)
                std::this_thread::yield();
            const auto answer = destination.passwords({.server = "the queue Office", .user = "ann"});
            return answer ? host::JobResult{.ok = false, .error = "The disk is full."}
                          : host::JobResult{.ok = false, .error = "Print where you can be asked."};
        }});
        window.whileSending([&isShown](QWidget&) { isShown = true; });
        const auto cancel = [](QWidget& question) { dynamic_cast<QDialog&>(question).reject(); };
        const auto accept = [](QWidget& question) { dynamic_cast<QDialog&>(question).accept(); };
        window.answer({agree, cancel, cancel});
        window.click("printButton");
        QCOMPARE(window.answered(), 3);
        QCOMPARE(window.dialog().message(), QString("The printer was not reached, because no user name and password "
                                                    "were given: the queue Office. To be asked again, print anew."));
        window.answer({agree, accept, cancel});
        window.click("printButton");
        QCOMPARE(window.dialog().message(), QString("The disk is full."));
    }

    void aJobThatIsHeldForAPasswordIsReleasedWithTheUsers() {
        std::vector<std::string> given;
        WindowUnderTest window({.submission = sentAsJobSeven,
                                .status =
                                    [&](const auto&, const auto&) {
                                        return given.size() < 2 ? host::JobStatus{.stage = host::JobStage::Held,
                                                                                  .wantsPassword = true}
                                                                : host::JobStatus{.stage = host::JobStage::Printing};
                                    },
                                .authentication =
                                    [&](const auto&, const host::JobResult& job, const host::Credentials& credentials) {
                                        given.push_back(std::to_string(job.jobId) + " " + credentials.password);
                                        return std::string();
                                    }});
        const auto type = [](const char* password) {
            return [password](QWidget& question) {
                QTest::keyClicks(question.findChild<QLineEdit*>("passwordField"), password);
                dynamic_cast<QDialog&>(question).accept();
            };
        };
        window.answer({agree, type("wrong"), type("right")});
        window.click("printButton");
        QCOMPARE(given, (std::vector<std::string>{"7 wrong", "7 right"}));
        QCOMPARE(window.dialog().printed().size(), std::size_t{1});
        QVERIFY(window.dialog().printed().front().note.empty());
    }

    void aJobWhoseUserGivesNoPasswordStaysHeldAndIsTold() {
        QString told;
        WindowUnderTest window({.submission = sentAsJobSeven, .status = [](const auto&, const auto&) {
                                    return host::JobStatus{.stage = host::JobStage::Held, .wantsPassword = true};
                                }});
        window.answer({agree, [](QWidget& question) { dynamic_cast<QDialog&>(question).reject(); },
                       [&](QWidget& message) {
                           told = dynamic_cast<QMessageBox&>(message).informativeText();
                           closeMessage(message);
                       }});
        window.click("printButton");
        QVERIFY2(told.startsWith("The job is held until a user's name"), qPrintable(told));
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
        WindowUnderTest window({.documents = {}});
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

    void whatIsChosenStaysWhenThePrinterIsChosenAgain() {
        WindowUnderTest window({.choices = {{"number-up", "2"}}});
        QCOMPARE(window.widget<QComboBox>("printerList").count(), 1);
        window.pick("paperList", "Letter");
        window.pick("printerList", 0);
        QCOMPARE(window.marked("PageSize"), QString("Letter"));
        QCOMPARE(window.widget<QComboBox>("paperList").currentText(), QString("Letter"));
        window.answer({agree});
        window.click("printButton");
        QCOMPARE(ticketOptions(window)["number-up"].toString(), QString("2"));
        QCOMPARE(ticketOptions(window)["PageSize"].toString(), QString("Letter"));
    }

    void theDefaultStaysChosenInsteadOfWhatIsKeptForThePrinter() {
        WindowUnderTest window({.kept = {{"PageSize", "A5"}}});
        QCOMPARE(window.marked("PageSize"), QString("A5"));
        window.pick("paperList", "A4");
        window.pick("printerList", 0);
        QCOMPARE(window.marked("PageSize"), QString("A4"));
    }

    void choicesThatWereGivenAreMadeOnThePanelsWithTheirRules() {
        WindowUnderTest window({.choices = {{"CVMediaType", "Plain"}, {"CVMediaType", "Glossy"}, {"media", "Letter"}}});
        QCOMPARE(window.marked("CVMediaType"), QString("Glossy"));
        QCOMPARE(window.marked("CVResolution"), QString("Photo"));
        QCOMPARE(window.marked("PageSize"), QString("Letter"));
        QVERIFY2(window.dialog().message().contains("Print Quality is now Photo"),
                 qPrintable(window.dialog().message()));
        window.open(WindowUnderTest::PrintSetting);
        QCOMPARE(window.widget<QComboBox>("mediaTypePopup").currentText(), QString("Other Glossy Paper"));
    }

    void aGivenChoiceThatIsRefusedIsTold() {
        WindowUnderTest window({.choices = {{"CVInputSlot", "Tray2"}, {"CVMediaType", "Glossy"}}});
        QCOMPARE(window.marked("CVMediaType"), QString("Glossy"));
        QVERIFY2(window.dialog().message().contains("cannot be used together with"),
                 qPrintable(window.dialog().message()));
    }

    void defaultsGoBackToThePpds() {
        WindowUnderTest window({.choices = {{"CVMediaType", "Glossy"}}});
        window.pick("paperList", "Letter");
        window.open(WindowUnderTest::ColorSetting);
        window.click("colorEnhanceButton");
        window.click("defaultsButton");
        QCOMPARE(window.dialog().findChild<QTabWidget*>("tabs")->currentIndex(),
                 static_cast<int>(WindowUnderTest::ColorSetting));
        QVERIFY(!window.widget<QCheckBox>("colorEnhanceButton").isChecked());
        QCOMPARE(window.marked("CVMediaType"), QString("Plain"));
        QCOMPARE(window.marked("PageSize"), QString("A4"));
    }

    void choicesAreRememberedIfTheUserSaysSo() {
        toolkit::MemoryUserDefaults defaults;
        for (const bool remembers : {true, false}) {
            {
                WindowUnderTest window({.userDefaults = &defaults});
                window.pick("paperList", "Letter");
                window.open(WindowUnderTest::ColorSetting);
                window.click("optionButton");
                if (!window.widget<QCheckBox>("colorEnhanceButton").isChecked())
                    window.click("colorEnhanceButton");
                window.widget<QSpinBox>("redField").setValue(5);
                window.open(WindowUnderTest::General);
                if (window.widget<QCheckBox>("rememberBox").isChecked() != remembers)
                    window.click("rememberBox");
                window.answer({agree});
                window.click("printButton");
                QVERIFY(!window.ticket().isEmpty());
            }
            WindowUnderTest window({.userDefaults = &defaults});
            QCOMPARE(window.widget<QCheckBox>("rememberBox").isChecked(), remembers);
            QCOMPARE(window.marked("PageSize"), QString(remembers ? "Letter" : "A4"));
            window.open(WindowUnderTest::ColorSetting);
            QCOMPARE(window.widget<QSpinBox>("redField").value(), remembers ? 5 : 0);
        }
    }

    void aCancelledDialogRemembersNoChoices() {
        toolkit::MemoryUserDefaults defaults;
        {
            WindowUnderTest window({.userDefaults = &defaults});
            window.pick("paperList", "Letter");
            window.click("rememberBox");
            window.dialog().reject();
        }
        WindowUnderTest window({.userDefaults = &defaults});
        QCOMPARE(window.marked("PageSize"), QString("A4"));
    }

    void theWindowComesBackInItsSize() {
        toolkit::MemoryUserDefaults defaults;
        QSize size;
        {
            WindowUnderTest window({.userDefaults = &defaults});
            size = window.dialog().size() + QSize(60, 40);
            window.dialog().resize(size);
            window.dialog().reject();
        }
        WindowUnderTest window({.userDefaults = &defaults});
        QCOMPARE(window.dialog().size(), size);
    }

    void scalingToAPaperGoesIntoTheJob() {
        WindowUnderTest window;
        window.pick("scalingList", "Letter");
        window.answer({agree});
        window.click("printButton");
        QCOMPARE(ticketOptions(window)["PageSize"].toString(), QString("Letter"));
        QCOMPARE(ticketOptions(window)["print-scaling"].toString(), QString("fit"));
    }

    void scalingCanBeTakenBack() {
        WindowUnderTest window;
        window.pick("scalingList", "Letter");
        window.pick("scalingList", 0);
        window.answer({agree});
        window.click("printButton");
        QCOMPARE(ticketOptions(window)["PageSize"].toString(), QString("A4"));
        QVERIFY(!ticketOptions(window).contains("print-scaling"));
    }

    void theDocumentIsShownByItsNamePagesAndPicture() {
        WindowUnderTest window;
        QCOMPARE(window.widget<QLabel>("documentName").text(), QString("picture.png"));
        QTRY_VERIFY(window.widget<QLabel>("documentPicture").isVisible());
        QCOMPARE(window.widget<QLabel>("documentDetails").text(), QString("1 page"));
        QVERIFY(!window.widget<QLabel>("documentPicture").pixmap().isNull());
    }

    void aDialogMayBeClosedWhileItsDocumentIsRead() {
        for (int round = 0; round < 5; ++round)
            WindowUnderTest window;
        QThreadPool::globalInstance()->waitForDone();
        QCoreApplication::processEvents(); // what was read is told to nobody
    }

    void aPdfIsShownWhereItCanBeRead() {
        const host::DocumentFacts facts = host::readDocument(WindowUnderTest::samplePdf(), 48);
        const bool isInstalled = std::filesystem::exists(host::pathOfPdfModule());
        QCOMPARE(facts.isReadable, isInstalled);
        QCOMPARE(facts.pages, isInstalled ? 1 : 0);
        QCOMPARE(std::max(facts.thumbnail.width(), facts.thumbnail.height()), isInstalled ? 48 : 0);
    }

    void aDocumentThatCannotBeShownIsSaidSoAndPrinted() {
        QTemporaryFile text;
        QVERIFY(text.open() && text.write("plain text\n") > 0 && text.flush());
        WindowUnderTest window({.documents = {text.fileName().toStdString()}});
        QTRY_COMPARE(window.widget<QLabel>("documentDetails").text(),
                     QString("It cannot be shown here, but it can be printed."));
        QVERIFY(!window.widget<QLabel>("documentPicture").isVisible());
        window.answer({agree});
        window.click("printButton");
        QVERIFY(!window.ticket().isEmpty());
    }

    // Through the entry, as the program runs it.
    void aJobThatCannotBeToldIsAFailureOfTheProgram() {
        void* module = ::dlopen(WINDOW_MODULE, RTLD_NOW | RTLD_LOCAL);
        QVERIFY2(module != nullptr, ::dlerror());
        auto* entry = reinterpret_cast<host::DialogEntry*>(::dlsym(module, host::kDialogEntrySymbol));
        QVERIFY(entry != nullptr);
        for (const auto& [output, status] : {std::pair("/dev/null", 0), std::pair("/dev/full", 1)}) {
            const QTemporaryDir folder;
            QTimer prints;
            connect(&prints, &QTimer::timeout, &prints, [] {
                const QWidget* modal = QApplication::activeModalWidget();
                for (const char* name : {"normalPaperAlertOKButton", "printButton"})
                    if (auto* button = modal == nullptr ? nullptr : modal->findChild<QPushButton*>(name))
                        button->click();
            });
            prints.start(10);
            const int own = ::dup(STDOUT_FILENO), other = ::open(output, O_WRONLY);
            ::dup2(other, STDOUT_FILENO);
            const int ended = entry({.documents = {WindowUnderTest::samplePicture()},
                                     .ppd = CV_SOURCE_DIR "/resources/models/corvane-a3.ppd",
                                     .folder = folder.path().toStdString(),
                                     .bundle = CV_BINARY_DIR "/PlugIns/CVInkQuality12.plugin"});
            ::dup2(own, STDOUT_FILENO);
            std::clearerr(stdout);
            ::close(own);
            ::close(other);
            QCOMPARE(ended, status);
            QVERIFY(QFile::exists(folder.filePath("ticket.json")));
        }
    }

    void theWindowLivesWhileAServerDoesNotAnswer() {
        QSemaphore answered; // is given by the window's own loop, so that a blocked window never gets its answer
        WindowUnderTest window({.submission = [&](const auto& destination, const auto& request, const auto& progress) {
            return answered.tryAcquire(1, 30000) ? host::submit(destination, request, progress)
                                                 : host::JobResult{.error = "The window stood still."};
        }});
        window.answer({agree});
        window.whileSending([&](QWidget&) { answered.release(); });
        window.click("printButton");
        QCOMPARE(window.dialog().printed().size(), std::size_t{1});
    }
};

QTEST_MAIN(WindowDialogTest)
#include "window_dialog_test.moc"
