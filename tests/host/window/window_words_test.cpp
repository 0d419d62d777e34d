// What the window says, and what it reads of what a user types.

#include "host/window/free_size_editor.h"
#include "host/window/job_words.h"
#include "host/window/mnemonics.h"
#include "host/window/page_ranges.h"
#include "host/window/session_starter.h"
#include "host/window/user_actions.h"
#include "host/window/window_texts.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDoubleSpinBox>
#include <QLabel>
#include <QPushButton>
#include <QTest>

using namespace host;

namespace {

std::unique_ptr<printing::PrinterDescription> samplePrinter(const char* language) {
    std::string error;
    auto description =
        printing::PrinterDescription::openFile(CV_SOURCE_DIR "/resources/models/corvane-a3.ppd", {language}, error);
    if (description == nullptr)
        qFatal("%s", error.c_str());
    description->markDefaults();
    return description;
}

const Language kJapanese("ja");
constexpr printing::CustomSizeLimits kLimits = {.minWidth = 252, .minHeight = 360, .maxWidth = 900, .maxHeight = 1400};

} // namespace

class WindowWordsTest : public QObject {
    Q_OBJECT

private slots:
    void everyTextHasAllItsPlacesForValuesInEveryLanguage() {
        for (const Language& language : {kJapanese, Language("de"), Language("fr"), Language("es"), Language("zh_CN")})
            for (int text = 0; text < static_cast<int>(Text::Count); ++text) {
                const QString own = windowText(static_cast<Text>(text), language);
                const QString english = windowText(static_cast<Text>(text), Language::English);
                QVERIFY2(!own.isEmpty(), qPrintable(english));
                for (const QString place : {"%1", "%2", "%3", "%4"})
                    QVERIFY2(own.contains(place) == english.contains(place), qPrintable(own));
            }
    }

    void textsComeFromTheLanguagesCatalogue() {
        QCOMPARE(windowText(Text::Print, Language::English), QString("Print"));
        QCOMPARE(windowText(Text::Print, kJapanese), QString("印刷"));
        QCOMPARE(windowText(Text::Print, Language("de")), QString("Drucken"));
        QCOMPARE(windowText(Text::Print, Language("zh_CN")), QString("打印"));
        QCOMPARE(windowText(Text::Print, Language("xx")), QString("Print"));
    }

    void theFirstLanguageThatTheWindowSpeaksIsTaken() {
        const std::pair<std::vector<std::string>, const char*> rows[] = {
            {{"xx", "ja", "en"}, "ja"},
            {{"ja-JP"}, "ja"},
            {{"en", "ja"}, "en"},
            {{"xx"}, "en"},
            {{"de_AT.UTF-8"}, "de"},
            {{"zh_CN.UTF-8"}, "zh_CN"},
            {{"zh_TW"}, "en"},
            {{"../de", "fr"}, "fr"},
            {{}, "en"},
        };
        for (const auto& [languages, code] : rows)
            QCOMPARE(windowLanguage(languages).code(), std::string(code));
    }

    void statesOfJobsAreSaidInTheWindowsLanguage() {
        using Status = JobStatus;
        const std::pair<Status, const char*> rows[] = {
            {{.stage = JobStage::Waiting}, "The job waits for its turn."},
            {{.stage = JobStage::Waiting, .hindrances = {Hindrance::OutOfPaper, Hindrance::CoverOpen}},
             "The job waits because the printer is out of paper, and the printer's cover is open."},
            {{.stage = JobStage::Waiting, .isQueuePaused = true, .serversWords = "for lunch"},
             "The queue is paused (for lunch): the job waits until it is resumed."},
            {{.stage = JobStage::Printing, .isQueuePaused = true, .hindrances = {Hindrance::PaperJam}},
             "The queue is paused because paper is jammed in the printer: the job waits until it is resumed."},
            {{.stage = JobStage::Held}, "The job is held until it is released."},
            {{.stage = JobStage::Held, .heldUntil = "night"}, "The job is held until “night”."},
            {{.stage = JobStage::Held, .wantsPassword = true},
             "The job is held until a user's name and password are given for its printer."},
            {{.stage = JobStage::Printing}, "The job is printing."},
            {{.stage = JobStage::Printing, .impressions = 3}, "The job is printing, sides so far: 3."},
            {{.stage = JobStage::Stopped, .serversWords = "50 %1"},
             "The job is stopped (50 %1): look at the server's messages, and cancel it or print it again."},
            {{.stage = JobStage::Cancelled}, "The job was cancelled."},
            {{.stage = JobStage::Failed}, "The job failed: look at the server's messages before you print again."},
            {{.stage = JobStage::Printed}, "The job was printed."},
            {{}, "The job is not known to its server any more: it was printed or removed."},
        };
        for (const auto& [status, english] : rows) {
            QCOMPARE(statusInWords(status, Language::English), QString(english));
            for (const char* code : {"ja", "de", "fr", "es", "zh_CN"}) {
                const QString own = statusInWords(status, Language(code));
                QVERIFY2(!own.isEmpty() && own != english, qPrintable(own));
                QVERIFY2(own.contains(QString::fromStdString(status.serversWords)), qPrintable(own));
            }
        }
    }

    void everyHindranceHasWordsOfItsOwn() {
        for (const char* code : {"en", "ja", "de", "fr", "es", "zh_CN"}) {
            QStringList all;
            for (int each = 0; each < static_cast<int>(Hindrance::Count); ++each)
                all << statusInWords({.stage = JobStage::Waiting, .hindrances = {static_cast<Hindrance>(each)}},
                                     Language(code));
            QCOMPARE(all.removeDuplicates(), qsizetype{0});
        }
    }

    void pagesAreNumbersAndRanges() {
        const std::pair<const char*, std::optional<std::string>> rows[] = {
            {"", ""},
            {"  ", ""},
            {"3", "3"},
            {"1-4", "1-4"},
            {" 1 - 4 , 7", "1-4,7"},
            {"2-2", "2-2"},
            {"4-1", std::nullopt},
            {"0", std::nullopt},
            {"1,", std::nullopt},
            {"a", std::nullopt},
            {"1-", std::nullopt},
            {"-3", std::nullopt},
            {"1;2", std::nullopt},
            {"99999999999", std::nullopt},
        };
        for (const auto& [typed, expected] : rows)
            QVERIFY2(pageRanges(QString::fromLatin1(typed)) == expected, typed);
    }

    void mnemonicsAreTheFirstFreeLetters() {
        QString taken = "P";
        QCOMPARE(textWithMnemonic("Paper", taken), QString("P&aper"));
        QCOMPARE(textWithMnemonic("Apple", taken), QString("App&le"));
        QCOMPARE(taken, QString("PAL"));
        QCOMPARE(textWithMnemonic("Pal", taken), QString("Pal"));
    }

    void textsWithoutLatinLettersGetTheirMnemonicInBrackets() {
        QString taken = "A";
        QCOMPARE(textWithMnemonic("用紙: ", taken), QString("用紙(&B): "));
        QCOMPARE(textWithMnemonic("纸张：", taken), QString("纸张(&C)："));
    }

    void preferredLettersComeFirstInBrackets() {
        QString taken = "P";
        QCOMPARE(textWithMnemonic("印刷", taken, "Print"), QString("印刷(&R)"));
        QCOMPARE(taken, QString("PR"));
    }

    void ampersandsInTextsAreNoMnemonics() {
        QString taken;
        QCOMPARE(textWithMnemonic("R&D", taken), QString("&R&&D"));
        QLabel label;
        setCaption(label, "R&D");
        QCOMPARE(label.text(), QString("R&D"));
        QCOMPARE(caption(label), QString("R&D"));
    }

    void assistiveTechnologyHearsNoMnemonic() {
        QPushButton button;
        QString taken;
        setTextWithMnemonic(button, "印刷", taken);
        QCOMPARE(button.text(), QString("印刷(&A)"));
        QCOMPARE(button.accessibleName(), QString("印刷"));
        setCaption(button, "閉じる");
        QCOMPARE(button.accessibleName(), QString("印刷")); // a name of its own stays
        QCheckBox box;
        setCaption(box, "一");
        setCaption(box, "二");
        QCOMPARE(box.accessibleName(), QString("二"));
    }

    void theNetChangeIsToldWithItsCauseInThePpdsWords() {
        const auto printer = samplePrinter("en");
        const Marks before = printer->marks();
        printer->mark("CVMediaType", "Glossy");
        printer->mark("CVResolution", "Photo");
        QCOMPARE(changeInWords(*printer, before, printer->marks(), Cause{.chosen = {{"CVMediaType", "Glossy"}}},
                               Language::English),
                 "Because you chose " + choiceInWords(*printer, "CVMediaType", "Glossy", Language::English) +
                     ": Print Quality is now Photo");
    }

    void whatWentBackIsNoChange() {
        const auto printer = samplePrinter("en");
        const Marks before = printer->marks();
        printer->mark("CVMediaType", "Glossy");
        printer->mark("CVMediaType", "Plain");
        QVERIFY(changeInWords(*printer, before, printer->marks(), {}, Language::English).isEmpty());
    }

    void refusalsAreToldInTheUsersLanguage() {
        const auto printer = samplePrinter("ja");
        const RefusedMark refusal{
            .option = "CVInputSlot", .choice = "Tray2", .with = {{"CVMediaType", "Glossy"}}, .reason = "the reason"};
        QVERIFY(refusalInWords(*printer, refusal, kJapanese).contains("給紙方法: トレイ2"));
        QCOMPARE(refusalInWords(*printer, refusal, Language::English), QString("the reason"));
    }

    void aFreePaperBearsItsSizeInPointsAsItsName() {
        const printing::Paper paper = freePaper(283.4645, 420);
        QCOMPARE(paper.name.value(), std::string("Custom.283.46x420"));
        QVERIFY(!paper.ppdName);
        QCOMPARE(paper.width.value(), 283.46);
    }

    void freeSizesAreLimitedInEveryUnit() {
        FreeSizeEditor editor(Language::English);
        editor.setLimits(kLimits);
        auto& width = *editor.findChild<QDoubleSpinBox*>("freeWidthField");
        auto& unit = *editor.findChild<QComboBox*>("freeUnitList");
        const double points[] = {72 / 25.4, 72, 1};
        for (int row = 0; row < unit.count(); ++row) {
            unit.setCurrentIndex(row);
            emit unit.activated(row);
            QVERIFY2(width.minimum() * points[row] >= 252 - 1e-6, qPrintable(unit.itemText(row)));
            QVERIFY2(width.maximum() * points[row] <= 900 + 1e-6, qPrintable(unit.itemText(row)));
        }
    }

    void anotherUnitKeepsTheFreeSize() {
        FreeSizeEditor editor(Language::English);
        editor.setLimits(kLimits);
        editor.setSize(300, 500);
        auto& unit = *editor.findChild<QComboBox*>("freeUnitList");
        for (int row = 0; row < unit.count(); ++row) {
            unit.setCurrentIndex(row);
            emit unit.activated(row);
            QCOMPARE(editor.widthInPoints(), 300.0);
            QCOMPARE(editor.heightInPoints(), 500.0);
        }
    }

    void aTypedSideIsToldInPoints() {
        FreeSizeEditor editor(Language::English);
        editor.setLimits(kLimits);
        editor.setSize(300, 500);
        int told = 0;
        editor.sizeChanged = [&] { ++told; };
        editor.findChild<QDoubleSpinBox*>("freeWidthField")->setValue(127);
        QCOMPARE(told, 1);
        QCOMPARE(editor.widthInPoints(), 360.0);
    }
};

QTEST_MAIN(WindowWordsTest)
#include "window_words_test.moc"
