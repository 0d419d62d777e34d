#include "tests/printing/ppd_text.h"
#include "tests/support/scratch_folder.h"

#include <algorithm>
#include <gmock/gmock.h>
#include <sys/stat.h>

namespace printing {
namespace {

using namespace printing_tests;
using testing::AllOf;
using testing::HasSubstr;
using testing::Not;

// A folder of the test's own with a good PPD's text.
class OpeningAPpd : public testing::Test {
protected:
    [[nodiscard]] std::string pathOf(const char* name) const { return folder.pathOf(name); }
    [[nodiscard]] std::string write(std::string_view text) const { return folder.write("printer.ppd", text); }
    /// The reason for which the file is refused.
    static std::string errorOf(const std::string& path) {
        std::string error;
        EXPECT_EQ(PrinterDescription::openFile(path, {"en"}, error), nullptr);
        return error;
    }
    static std::string errorOfText(std::string_view text) {
        std::string error;
        EXPECT_EQ(PrinterDescription::openText(text, {"en"}, error), nullptr);
        return error;
    }

    const test_support::ScratchFolder folder;
    const std::string good = ppdWith(option("CVMediaType/Media", "Plain", {"Plain/Plain Paper", "Glossy/Glossy"}));
};

TEST_F(OpeningAPpd, AGoodFileOpens) {
    std::string error;
    const auto printer = PrinterDescription::openFile(write(good), {"en"}, error);
    ASSERT_NE(printer, nullptr) << error;
    EXPECT_NE(printer->option("CVMediaType"), nullptr);
}

TEST_F(OpeningAPpd, LineEndsOfEveryKindOpen) {
    for (const char* lineEnd : {"\r\n", "\r"}) {
        std::string text = good;
        for (std::size_t at = 0; (at = text.find('\n', at)) != std::string::npos;
             at += std::string_view(lineEnd).size())
            text.replace(at, 1, lineEnd);
        SCOPED_TRACE(lineEnd[1] == '\0' ? "CR" : "CR LF");
        EXPECT_NE(openPrinter(text)->option("CVMediaType"), nullptr);
    }
}

TEST_F(OpeningAPpd, AMissingFileIsNamedWithTheReason) {
    EXPECT_THAT(errorOf(pathOf("absent.ppd")), AllOf(HasSubstr("absent.ppd"), HasSubstr("No such file")));
    EXPECT_NE(errorOf(""), "");
}

TEST_F(OpeningAPpd, AFolderIsNamedAsSuch) {
    EXPECT_THAT(errorOf(folder.path()), AllOf(HasSubstr(folder.path().string()), HasSubstr("folder")));
}

TEST_F(OpeningAPpd, AFifoIsRefusedAtOnce) {
    ASSERT_EQ(::mkfifo(pathOf("fifo").c_str(), 0600), 0);
    EXPECT_THAT(errorOf(pathOf("fifo")), HasSubstr("not a regular file"));
}

TEST_F(OpeningAPpd, ADeviceIsRefused) {
    EXPECT_THAT(errorOf("/dev/zero"), AllOf(HasSubstr("/dev/zero"), HasSubstr("not a regular file")));
}

TEST_F(OpeningAPpd, AFileOfFourMegabytesOpensAndALargerOneDoesNot) {
    std::string text = good;
    const std::string kComment = "*% " + std::string(96, '-') + "\n";
    while (text.size() + kComment.size() <= PrinterDescription::kLargestFile)
        text += kComment;
    text.append(PrinterDescription::kLargestFile - text.size(), '\n');
    std::string error;
    EXPECT_NE(PrinterDescription::openFile(write(text), {"en"}, error), nullptr) << error;
    EXPECT_THAT(errorOf(write(text + "\n")), AllOf(HasSubstr("printer.ppd"), HasSubstr("larger than 4 MB")));
    EXPECT_THAT(errorOfText(text + "\n"), HasSubstr("larger than 4 MB"));
}

TEST_F(OpeningAPpd, AnEmptyFileIsRefused) {
    EXPECT_THAT(errorOf(write("")), HasSubstr("printer.ppd"));
    EXPECT_NE(errorOfText(""), "");
}

TEST_F(OpeningAPpd, WhatIsNoPpdIsRefused) {
    for (const char* text :
         {"%!PS-Adobe-3.0\nshowpage\n", "{\"json\":true}\n", "\n\n\n", "*Manufacturer: \"Corvane\"\n",
          "\x7F"
          "ELF\x02\x01\x01"}) {
        SCOPED_TRACE(text);
        EXPECT_THAT(errorOf(write(text)), HasSubstr("printer.ppd"));
    }
}

TEST_F(OpeningAPpd, ASyntaxErrorIsGivenWithItsLine) {
    const std::string tooLong = "*" + std::string(60, 'K') + ": \"a keyword beyond the format's limit\"\n";
    const auto line = std::ranges::count(good, '\n') + 1;
    EXPECT_THAT(errorOfText(good + tooLong), HasSubstr("line " + std::to_string(line)));
}

TEST_F(OpeningAPpd, WithoutOptionsItIsRefused) {
    EXPECT_THAT(errorOf(write(ppdWith("*NickName: \"Corvane\"\n"))), HasSubstr("no options"));
}

TEST_F(OpeningAPpd, AnUnterminatedTextIsRefused) {
    EXPECT_NE(errorOfText(ppdWith("*NickName: \"Corvane\n") + option("CVMediaType", "Plain", {"Plain"})), "");
}

TEST_F(OpeningAPpd, AFileThatWasCutOffInAnOptionIsRefusedWithTheOptionsName) {
    const std::string whole = ppdWith(option("CVMediaType/Media", "Plain", {"Plain", "Glossy"}) +
                                      option("CVResolution/Quality", "Standard", {"Standard", "High"}));
    const std::size_t begin = whole.find("*OpenUI *CVResolution"), end = whole.find("*CloseUI: *CVResolution");
    for (std::size_t cut = whole.find('\n', begin) + 1; cut <= end; cut = whole.find('\n', cut) + 1) {
        SCOPED_TRACE(whole.substr(begin, cut - begin));
        EXPECT_THAT(errorOfText(whole.substr(0, cut)), HasSubstr("CVResolution"));
    }
}

TEST_F(OpeningAPpd, AnOptionWhoseClosingLineWasForgottenIsNotTakenForACutOffFile) {
    std::string text =
        ppdWith("*OpenGroup: Quality/Quality\n" + option("CVResolution/Quality", "Standard", {"Standard", "High"}) +
                "*CloseGroup: Quality\n" + option("CVMediaType/Media", "Plain", {"Plain", "Glossy"}));
    const std::string closing = "*CloseUI: *CVResolution\n";
    text.erase(text.find(closing), closing.size());
    const auto printer = openPrinter(text);
    ASSERT_NE(printer, nullptr);
    EXPECT_NE(printer->option("CVResolution"), nullptr);
    EXPECT_NE(printer->option("CVMediaType"), nullptr);
}

TEST_F(OpeningAPpd, AJobControlOptionThatWasCutOffIsRefusedToo) {
    const std::string text =
        good + "*JCLOpenUI *JCLDuplex/Sides: PickOne\n*DefaultJCLDuplex: Off\n*JCLDuplex Off: \"\"\n";
    EXPECT_THAT(errorOfText(text), HasSubstr("JCLDuplex"));
    EXPECT_NE(openPrinter(text + "*JCLCloseUI: *JCLDuplex\n")->option("JCLDuplex"), nullptr);
}

TEST_F(OpeningAPpd, AnErrorsTextHasNoControlCharacters) {
    EXPECT_THAT(errorOf(pathOf("bell\a\n.ppd")), AllOf(HasSubstr("bell.ppd"), Not(HasSubstr("\a"))));
}

TEST_F(OpeningAPpd, NothingIsMarkedYet) {
    const auto printer = openPrinter(good);
    EXPECT_EQ(printer->markedChoice("CVMediaType"), std::nullopt);
    EXPECT_FALSE(printer->isDefaultMarked(*printer->option("CVMediaType")));
}

TEST_F(OpeningAPpd, TheSamplePrintersOpen) {
    for (const char* name : {"corvane-a3", "corvane-a4", "corvane-mirror", "corvane-office"}) {
        SCOPED_TRACE(name);
        std::string error;
        const auto printer = PrinterDescription::openFile(
            std::string(CV_SOURCE_DIR "/resources/models/") + name + ".ppd", {"ja"}, error);
        ASSERT_NE(printer, nullptr) << error;
        EXPECT_NE(printer->option("CVMediaType"), nullptr);
    }
}

} // namespace
} // namespace printing
