// Queues of a print server, in the window.

#include "window_under_test.h"

#include "tests/support/fake_print_server.h"
#include "tests/support/private_cupsd.h"

#include <QApplication>
#include <QComboBox>
#include <QDeadlineTimer>
#include <QDir>
#include <QJsonDocument>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QMessageBox>
#include <QPushButton>
#include <QSpinBox>

#include <memory>
#include <optional>

using tests::WindowUnderTest;

namespace {

constexpr int kSearchMilliseconds = 30000; // more than the server needs

const std::string kModel = CV_SOURCE_DIR "/resources/models/corvane-a3.ppd";

constexpr int kListOfQueues = 0x4002; // the operation's number

std::string modelsPpd() {
    QFile file(QString::fromStdString(kModel));
    return file.open(QIODevice::ReadOnly) ? file.readAll().toStdString() : std::string();
}

// Answers the question for a password.
std::function<void(QWidget&)> answering(const char* password) {
    return [password](QWidget& question) {
        question.findChild<QLineEdit*>("userNameField")->setText("ann");
        QTest::keyClicks(question.findChild<QLineEdit*>("passwordField"), password);
        QTest::keyClick(&question, Qt::Key_Return);
    };
}

bool isPasswordAskedFor() {
    const QWidget* modal = QApplication::activeModalWidget();
    return modal != nullptr && modal->objectName() == "passwordQuestion";
}

void agree(QWidget& alert) {
    static_cast<QDialog&>(alert).findChild<QPushButton*>("normalPaperAlertOKButton")->click();
}

// Closes what is told of a sent job. The text that takes it is borrowed.
std::function<void(QWidget&)> closingNote(QString& told) {
    return [&told](QWidget& note) {
        auto& box = dynamic_cast<QMessageBox&>(note);
        told = box.informativeText();
        box.accept();
    };
}

} // namespace

class WindowQueuesTest : public QObject {
    Q_OBJECT

private slots:
    void initTestCase() {
        for (const char* name : {"LPDEST", "PRINTER"})
            qunsetenv(name);
        qputenv("HOME", home_.path().toUtf8());
        server_ = std::make_unique<test_support::PrivateCupsd>();
        server_->addQueue("Office", kModel);
        server_->addQueueWithoutPpd("Raw");
    }
    void cleanupTestCase() { server_.reset(); }
    void cleanup() {
        server_->thaw(); // where a test ended early
        QFile::remove(options());
        QVERIFY2(!QDir(home_.filePath("Printed")).exists(), "something went to a folder");
    }

    void aQueueThatWasNamedIsChosenOnceItsPpdIsThere() {
        WindowUnderTest window(setup("Office"));
        QVERIFY(window.dialog().session() == nullptr);
        QTRY_VERIFY_WITH_TIMEOUT(window.dialog().session() != nullptr, kSearchMilliseconds);
        QCOMPARE(window.widget<QComboBox>("printerList").currentText(), QString("Office"));
        QVERIFY(window.widget<QPushButton>("printButton").isEnabled());
        QVERIFY(!window.widget<QLabel>("lookingLabel").isVisible());
        window.answer({agree});
        window.click("printButton");
        QCOMPARE(window.dialog().printed().size(), std::size_t{1});
        const auto record = server_->waitForRecord(window.dialog().printed().front().jobId);
        QVERIFY2(record.has_value(), server_->errorLog().c_str());
        QCOMPARE(record->options.at("CVMediaType"), std::string("Plain"));
    }

    void withoutANameTheDefaultQueueIsChosen() {
        keepOptions("Default Office\n");
        WindowUnderTest window(setup(""));
        QTRY_VERIFY_WITH_TIMEOUT(window.dialog().session() != nullptr, kSearchMilliseconds);
        QCOMPARE(window.widget<QComboBox>("printerList").currentText(), QString("Office"));
    }

    void printingBeforeTheSearchHasEndedSendsNothing() {
        server_->freeze();
        WindowUnderTest window(setup("Office"));
        QVERIFY(window.widget<QLabel>("lookingLabel").isVisible());
        QVERIFY(!window.widget<QPushButton>("printButton").isEnabled());
        QCOMPARE(window.widget<QComboBox>("printerList").currentIndex(), -1);
        QTest::keyClick(&window.dialog(), Qt::Key_Return);
        window.dialog().print();
        server_->thaw();
        QTRY_VERIFY_WITH_TIMEOUT(window.dialog().session() != nullptr, kSearchMilliseconds);
        QVERIFY(window.dialog().printed().empty());
        QVERIFY(window.dialog().isVisible());
    }

    void aServerThatIsNotThereIsTold() {
        auto missing = setup("Office");
        missing.server = home_.filePath("no-socket").toStdString();
        WindowUnderTest window(std::move(missing));
        QTRY_VERIFY_WITH_TIMEOUT(window.dialog().message().contains("No connection"), kSearchMilliseconds);
        expectNoPrinter(window);
    }

    void aQueueThatDoesNotExistIsTold() {
        WindowUnderTest window(setup("Nobody"));
        QTRY_COMPARE_WITH_TIMEOUT(window.dialog().message(),
                                  QString("There is no queue “Nobody”: choose another printer."), kSearchMilliseconds);
        expectNoPrinter(window);
    }

    void anInstanceThatDoesNotExistIsTold() {
        auto named = setup("Office");
        named.instance = "none";
        WindowUnderTest window(std::move(named));
        QTRY_VERIFY_WITH_TIMEOUT(window.dialog().message().contains("“Office/none”"), kSearchMilliseconds);
        expectNoPrinter(window);
    }

    void aQueueWithoutAPpdIsTold() {
        WindowUnderTest window(setup("Raw"));
        QTRY_VERIFY_WITH_TIMEOUT(window.dialog().message().startsWith("“Raw” has no PPD"), kSearchMilliseconds);
        QVERIFY(window.dialog().session() == nullptr);
        QVERIFY(!window.widget<QPushButton>("printButton").isEnabled());
    }

    void anotherPrinterIsChosenWithWhatWasGiven() {
        auto named = setup("Nobody");
        named.choices = {{"CVMediaType", "Glossy"}};
        WindowUnderTest window(std::move(named));
        QTRY_VERIFY_WITH_TIMEOUT(!window.dialog().message().isEmpty(), kSearchMilliseconds);
        window.pick("printerList", 0);
        QCOMPARE(window.marked("CVMediaType"), QString("Glossy"));
        QVERIFY(window.widget<QPushButton>("printButton").isEnabled());
    }

    void theJobsOwnOptionsStayWithAnotherPrinter() {
        server_->addQueue("Another", CV_SOURCE_DIR "/resources/models/corvane-a4.ppd");
        auto given = setup("Office");
        given.choices = {{"number-up", "2"}};
        WindowUnderTest window(std::move(given));
        QTRY_VERIFY_WITH_TIMEOUT(window.dialog().session() != nullptr, kSearchMilliseconds);
        window.pick("paperList", "Letter");
        window.pick("twoSidedList", 1);
        auto& printers = window.widget<QComboBox>("printerList");
        window.pick("printerList", printers.findText("Another", Qt::MatchContains));
        QTRY_VERIFY_WITH_TIMEOUT(window.dialog().session() != nullptr, kSearchMilliseconds);
        QCOMPARE(window.marked("PageSize"), QString("Letter"));
        window.answer({agree});
        window.click("printButton");
        QCOMPARE(window.dialog().printed().size(), std::size_t{1});
        const auto record = server_->waitForRecord(window.dialog().printed().front().jobId);
        QVERIFY2(record.has_value(), server_->errorLog().c_str());
        QCOMPARE(record->options.at("number-up"), std::string("2"));
        QVERIFY(!record->options.contains("Duplex")); // which this printer has not
    }

    void whatIsKeptForAQueueIsNoOptionOfItsJobs() {
        keepOptions("Dest Office copies=2 job-priority=77 CVMediaType=Glossy\n");
        WindowUnderTest window(setup("Office"));
        QTRY_VERIFY_WITH_TIMEOUT(window.dialog().session() != nullptr, kSearchMilliseconds);
        QCOMPARE(window.marked("CVMediaType"), QString("Glossy"));
        QCOMPARE(window.widget<QSpinBox>("copiesField").value(), 2);
        window.answer({agree});
        window.click("printButton");
        QCOMPARE(window.dialog().printed().size(), std::size_t{1});
        const auto record = server_->waitForRecord(window.dialog().printed().front().jobId);
        QVERIFY2(record.has_value(), server_->errorLog().c_str());
        QCOMPARE(record->copies, std::string("2"));
    }

    void givenCopiesGoBeforeKeptOnes() {
        keepOptions("Dest Office copies=2\n");
        auto given = setup("Office");
        given.copies = 1;
        WindowUnderTest window(std::move(given));
        QTRY_VERIFY_WITH_TIMEOUT(window.dialog().session() != nullptr, kSearchMilliseconds);
        QCOMPARE(window.widget<QSpinBox>("copiesField").value(), 1);
    }

    void severalDocumentsAreOneJob() {
        auto several = setup("Office");
        several.documents.push_back(WindowUnderTest::samplePdf());
        WindowUnderTest window(std::move(several));
        QTRY_VERIFY_WITH_TIMEOUT(window.dialog().session() != nullptr, kSearchMilliseconds);
        const std::size_t before = server_->jobStates().size();
        window.answer({agree});
        window.click("printButton");
        QCOMPARE(window.dialog().printed().size(), std::size_t{1});
        QCOMPARE(server_->jobStates().size(), before + 1);
    }

    void optionsThatChangedOnTheServerAreShownBeforeAnythingIsSent() {
        server_->addQueue("Changing", kModel);
        WindowUnderTest window(setup("Changing"));
        QTRY_VERIFY_WITH_TIMEOUT(window.dialog().session() != nullptr, kSearchMilliseconds);
        window.pick("paperList", "Letter");
        QVERIFY(window.widget<QComboBox>("colorMatchingList").isVisible());
        server_->addQueue("Changing", CV_SOURCE_DIR "/resources/models/corvane-office.ppd");
        window.answer({agree});
        window.click("printButton");
        QVERIFY2(window.dialog().message().startsWith("The printer’s options have changed"),
                 qPrintable(window.dialog().message()));
        QVERIFY(window.dialog().isVisible() && window.dialog().printed().empty());
        QVERIFY(!window.widget<QComboBox>("colorMatchingList").isVisible());
        QCOMPARE(window.marked("PageSize"), QString("Letter"));
    }

    void aGuardedServerIsAskedWithTheUsersPassword() {
        const test_support::FakePrintServer guarded({}, "ann:right word", modelsPpd());
        WindowUnderTest window(setup("Recorder", guarded.hostAndPort()));
        window.answer({answering("wrong"), answering("right word"), agree});
        QTRY_VERIFY_WITH_TIMEOUT(window.dialog().session() != nullptr, kSearchMilliseconds);
        QCOMPARE(window.answered(), 2); // what the list of queues was given the PPD needs not be
        window.click("printButton");
        QCOMPARE(window.answered(), 3); // nor the job
        QCOMPARE(window.dialog().printed().size(), std::size_t{1});
        QVERIFY(guarded.documentBytes() > 0);
    }

    void whoGivesNoPasswordIsTold_data() {
        QTest::addColumn<QString>("language");
        QTest::addColumn<QString>("beginning");
        QTest::addColumn<QString>("end");
        QTest::newRow("en") << "en"
                            << "The printer was not reached, because no user name and password were given: "
                            << "To be asked again, close this window and print anew.";
        QTest::newRow("ja") << "ja"
                            << "ユーザー名とパスワードが入力されなかったため、プリンターに接続できませんでした: "
                            << "もう一度入力するには、このウインドウを閉じて印刷し直してください。";
        QTest::newRow("de") << "de"
                            << "Der Drucker wurde nicht erreicht, weil kein Benutzername und kein Passwort "
                               "angegeben wurden: "
                            << "Um noch einmal gefragt zu werden, schließen Sie dieses Fenster und drucken Sie erneut.";
        QTest::newRow("fr") << "fr"
                            << "L’imprimante n’a pas été jointe, car aucun nom d’utilisateur ni mot de passe "
                               "n’a été donné : "
                            << "Pour qu’ils soient redemandés, fermez cette fenêtre et imprimez de nouveau.";
        QTest::newRow("es") << "es"
                            << "No se ha podido acceder a la impresora porque no se han indicado un nombre de "
                               "usuario y una contraseña: "
                            << "Para que se pidan de nuevo, cierre esta ventana y vuelva a imprimir.";
        QTest::newRow("zh_CN") << "zh_CN"
                               << "由于未提供用户名和密码，无法访问打印机："
                               << "要再次输入，请关闭此窗口并重新打印。";
    }

    void whoGivesNoPasswordIsTold() {
        QFETCH(const QString, language);
        QFETCH(const QString, beginning);
        QFETCH(const QString, end);
        const test_support::FakePrintServer guarded({}, "ann:right word", modelsPpd());
        auto asked = setup("Recorder", guarded.hostAndPort());
        asked.languages = {language.toStdString()};
        WindowUnderTest window(std::move(asked));
        window.answer({[](QWidget& question) { QTest::keyClick(&question, Qt::Key_Escape); }});
        QTRY_VERIFY_WITH_TIMEOUT(!window.dialog().message().isEmpty(), kSearchMilliseconds);
        const QString told = window.dialog().message();
        QVERIFY2(told.startsWith(beginning) && told.endsWith(end), qPrintable(told));
        QVERIFY2(told.contains(QString::fromStdString(guarded.hostAndPort())), qPrintable(told));
        expectNoPrinter(window);
        QVERIFY(!window.widget<QPushButton>("undoButton").isVisible());
        QVERIFY(!isPasswordAskedFor());
    }

    void whoGivesNoPasswordForAPpdMayChooseThePrinterAnew() {
        const test_support::FakePrintServer guarded({}, "ann:right word", modelsPpd());
        QWidget window;
        window.show();
        host::PasswordQuestions questions(window, host::Language::English);
        host::PrinterSearch search(questions);
        for (const bool isAnswered : {false, true}) {
            std::optional<host::FetchedPpd> found;
            search.fetchPpdOf({.server = guarded.hostAndPort(), .queue = "Recorder"},
                              [&](const host::FetchedPpd& ppd) { found = ppd; });
            QTRY_VERIFY_WITH_TIMEOUT(isPasswordAskedFor(), kSearchMilliseconds);
            if (isAnswered)
                answering("right word")(*QApplication::activeModalWidget());
            else
                QTest::keyClick(QApplication::activeModalWidget(), Qt::Key_Escape);
            QTRY_VERIFY_WITH_TIMEOUT(found.has_value(), kSearchMilliseconds);
            QCOMPARE(found->text.empty(), !isAnswered);
            QCOMPARE(QString::fromStdString(found->error).endsWith("To be asked again, choose the printer anew."),
                     !isAnswered);
        }
    }

    void aPresetOfAGuardedServerIsLookedForWithTheUsersPassword() {
        keepOptions("Default Recorder\nDest Recorder/photo CVMediaType=Glossy copies=3\n");
        const test_support::FakePrintServer guarded({}, "ann:right word", modelsPpd());
        for (const char* queue : {"Recorder", ""}) { // the default one
            auto given = setup(queue, guarded.hostAndPort());
            given.choices = {{"CVBiDir", "OFF"}};
            given.preset = "photo";
            given.looksForPreset = true;
            WindowUnderTest window(std::move(given));
            window.answer({answering("right word")});
            QTRY_VERIFY_WITH_TIMEOUT(window.dialog().session() != nullptr, kSearchMilliseconds);
            QCOMPARE(window.marked("CVMediaType"), QString("Glossy"));
            QCOMPARE(window.marked("CVBiDir"), QString("OFF"));
            QCOMPARE(window.widget<QSpinBox>("copiesField").value(), 3);
            QVERIFY(window.widget<QPushButton>("undoButton").isVisible());
        }
    }

    void aPresetThatAGuardedServersQueueHasNotIsTold() {
        const test_support::FakePrintServer guarded({}, "ann:right word", modelsPpd());
        auto given = setup("Recorder", guarded.hostAndPort());
        given.choices = {{"CVBiDir", "OFF"}};
        given.preset = "photo";
        given.looksForPreset = true;
        WindowUnderTest window(std::move(given));
        window.answer({answering("right word")});
        QTRY_VERIFY_WITH_TIMEOUT(window.dialog().session() != nullptr, kSearchMilliseconds);
        const QString told = window.dialog().message();
        QVERIFY2(told.startsWith("The queue “Recorder” has no preset “photo”: choose another one."), qPrintable(told));
        QCOMPARE(window.marked("CVBiDir"), QString("OFF"));
    }

    void aPresetIsToldWhereNoQueueIsTheDefaultOne() {
        const test_support::FakePrintServer guarded({}, "ann:right word", modelsPpd());
        auto given = setup("", guarded.hostAndPort());
        given.choices = {{"CVMediaType", "Glossy"}}; // is told too
        given.preset = "photo";
        given.looksForPreset = true;
        WindowUnderTest window(std::move(given));
        window.answer({answering("right word")});
        QTRY_VERIFY_WITH_TIMEOUT(window.dialog().session() != nullptr, kSearchMilliseconds);
        const QString told = window.dialog().message();
        QVERIFY2(told.contains("has no preset “photo”: choose another one. "), qPrintable(told));
        QVERIFY(window.widget<QPushButton>("undoButton").isVisible());
    }

    void aDialogThatEndsGivesTheQuestionUp() {
        const test_support::FakePrintServer guarded({}, "ann:right word", modelsPpd());
        WindowUnderTest window(setup("Recorder", guarded.hostAndPort()));
        QTRY_VERIFY_WITH_TIMEOUT(isPasswordAskedFor(), kSearchMilliseconds);
        window.dialog().reject();
        QVERIFY(!window.dialog().isVisible());
        QVERIFY(QApplication::activeModalWidget() == nullptr);
        QTRY_VERIFY_WITH_TIMEOUT(window.dialog().message().contains("no user name and password were given"),
                                 kSearchMilliseconds);
    }

    // The search, which is waited for, would wait for ever.
    void aDialogThatIsDestroyedGivesTheQuestionUp() {
        const test_support::FakePrintServer guarded({}, "ann:right word", modelsPpd());
        for (const bool isShown : {true, false}) {
            WindowUnderTest window(setup("Recorder", guarded.hostAndPort()));
            if (isShown)
                QTRY_VERIFY_WITH_TIMEOUT(isPasswordAskedFor(), kSearchMilliseconds);
        }
        QVERIFY(QApplication::activeModalWidget() == nullptr);
        QCOMPARE(guarded.asked().size(), std::size_t{0});
    }

    void aStepThatIsToldBeforeTheSearchFailsCanStillBeUndone() {
        auto server = std::make_unique<test_support::FakePrintServer>(
            std::map{std::pair(kListOfQueues, test_support::Reply::Silence)});
        WindowUnderTest window(setup("Recorder", server->hostAndPort()));
        window.pick("printerList", 0);
        window.open(WindowUnderTest::PrintSetting);
        window.pick("mediaTypePopup", "Other Glossy Paper");
        const QString told = window.dialog().message();
        QVERIFY(!told.isEmpty());
        server.reset();
        QTRY_VERIFY_WITH_TIMEOUT(window.dialog().message().size() > told.size(), kSearchMilliseconds);
        QVERIFY2(window.dialog().message().startsWith(told), qPrintable(window.dialog().message()));
        window.click("undoButton");
        QCOMPARE(window.marked("CVMediaType"), QString("Plain"));
    }

    void aJobThatItsPrinterHoldsForAPasswordIsReleasedWithTheUsers() {
        server_->addQueue("Guarded", kModel, {.backendStatus = 2});
        bool isHeld = false;
        auto named = setup("Guarded");
        named.status = [&](const auto& destination, const auto& job) { // the printer takes its time to hold the job
            host::JobStatus status = host::readStatus(destination, job);
            for (QDeadlineTimer deadline(kSearchMilliseconds); !isHeld && !deadline.hasExpired();
                 status = host::readStatus(destination, job))
                isHeld = status.wantsPassword;
            return status;
        };
        WindowUnderTest window(std::move(named));
        QTRY_VERIFY_WITH_TIMEOUT(window.dialog().session() != nullptr, kSearchMilliseconds);
        window.answer({agree, answering("a word")});
        window.click("printButton");
        QCOMPARE(window.answered(), 2);
        const int job = window.dialog().printed().front().jobId;
        QTRY_COMPARE_WITH_TIMEOUT(host::jobStatus(server_->socket(), job).stage, host::JobStage::Printed,
                                  kSearchMilliseconds);
        QFile given(QString::fromStdString(server_->recordFolder() / ("job-" + std::to_string(job) + ".credentials")));
        QVERIFY(given.open(QIODevice::ReadOnly));
        QCOMPARE(given.readAll(), QByteArray("ann:a word"));
        server_->deleteQueue("Guarded");
    }

    void aPresetsPriorityAndHoldingTimeReachTheJob() {
        keepOptions("Dest Office/later CVMediaType=Glossy job-priority=77 job-hold-until=indefinite\n");
        WindowUnderTest window(setup("Office"));
        QTRY_VERIFY_WITH_TIMEOUT(window.dialog().session() != nullptr, kSearchMilliseconds);
        QMenu& presets = *window.widget<QPushButton>("presetsButton").menu();
        emit presets.aboutToShow();
        QVERIFY(presets.actions().front()->text().contains("ater"));
        presets.actions().front()->trigger();
        QString told;
        window.answer({agree, closingNote(told)});
        window.click("printButton");
        const int job = window.dialog().printed().front().jobId;
        QCOMPARE(server_->jobAttribute(job, "job-priority"), std::string("77"));
        QCOMPARE(server_->jobAttribute(job, "job-hold-until"), std::string("indefinite"));
        QCOMPARE(told, QString("The job is held until it is released."));
    }

    void theDefaultsDoNotHoldTheJobAsAPresetDid() {
        keepOptions("Dest Office/later job-priority=77 job-hold-until=indefinite\n");
        auto given = setup("Office");
        given.preset = "later";
        given.presetChoices = {{"job-priority", "77"}, {"job-hold-until", "indefinite"}};
        WindowUnderTest window(std::move(given));
        QTRY_VERIFY_WITH_TIMEOUT(!window.dialog().message().isEmpty() && window.dialog().session() != nullptr,
                                 kSearchMilliseconds);
        window.click("defaultsButton");
        QString told;
        window.answer({agree, closingNote(told)}); // a held job's; it is not to come
        window.click("printButton");
        QCOMPARE(window.dialog().printed().size(), std::size_t{1});
        QCOMPARE(told, QString());
        const int job = window.dialog().printed().front().jobId;
        QCOMPARE(server_->jobAttribute(job, "job-priority"), std::string("50"));
        QCOMPARE(server_->jobAttribute(job, "job-hold-until"), std::string("no-hold"));
    }

    // The command line's sentence and the window's tell the same; the window's has other quotation marks, where any.
    void whatHindersAJobIsSaidInTheWindowsLanguage() {
        server_->addQueue("Empty", kModel, {.reason = "media-empty-error", .waits = true});
        const host::JobResult first = host::submitToQueue({.server = server_->socket(), .queue = "Empty"},
                                                          {.documentPath = WindowUnderTest::samplePicture()});
        QVERIFY2(first.ok, first.error.c_str());
        QTRY_VERIFY_WITH_TIMEOUT(host::jobStatus(server_->socket(), first.jobId).isHindered, kSearchMilliseconds);
        for (const char* language : {"en", "fr"}) {
            auto named = setup("Empty");
            named.languages = {language};
            WindowUnderTest window(std::move(named));
            QTRY_VERIFY_WITH_TIMEOUT(window.dialog().session() != nullptr, kSearchMilliseconds);
            QString told;
            window.answer({agree, closingNote(told)});
            window.click("printButton");
            const int job = window.dialog().printed().front().jobId;
            const std::string english = host::jobStatus(server_->socket(), job).words;
            QCOMPARE(english, std::string("The job waits because the printer is out of paper."));
            QCOMPARE(told, QString(language == std::string("en")
                                       ? english.c_str()
                                       : "Le travail attend, car l’imprimante n’a plus de papier."));
        }
        server_->deleteQueue("Empty");
    }

private:
    QString options() const { return home_.filePath(".cups/lpoptions"); }

    void keepOptions(const char* lines) const {
        QDir(home_.path()).mkpath(".cups");
        QFile file(options());
        QVERIFY(file.open(QIODevice::WriteOnly) && file.write(lines) > 0);
    }

    WindowUnderTest::Setup setup(const std::string& queue) const { return setup(queue, server_->socket()); }
    static WindowUnderTest::Setup setup(const std::string& queue, const std::string& server) {
        return {.folder = WindowUnderTest::ToFolder::No, .looksForQueues = true, .printer = queue, .server = server};
    }

    static void expectNoPrinter(WindowUnderTest& window) {
        QVERIFY(window.dialog().session() == nullptr);
        QVERIFY(!window.widget<QPushButton>("printButton").isEnabled());
        QCOMPARE(window.widget<QComboBox>("printerList").currentIndex(), -1);
        QVERIFY(window.widget<QComboBox>("printerList").count() > 0);
    }

    QTemporaryDir home_;
    std::unique_ptr<test_support::PrivateCupsd> server_;
};

QTEST_MAIN(WindowQueuesTest)
#include "window_queues_test.moc"
