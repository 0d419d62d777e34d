#include "host/window/window_texts.h"

#include "toolkit/preferred_languages.h"

#include <algorithm>
#include <iterator>

namespace host {
namespace {

struct Row {
    Text text;
    const char* english;
    const char* japanese;
};

constexpr Row kTexts[] = {
    // text, English, Japanese
    {Text::WindowTitle, "Print: %1", "印刷: %1"},
    {Text::Print, "Print", "印刷"},
    {Text::Cancel, "Cancel", "キャンセル"},
    {Text::Close, "Close", "閉じる"},
    {Text::Back, "Back", "戻る"},
    {Text::More, "More", "その他"},
    {Text::ShowWarnings, "Show all warnings again", "すべての警告を再び表示する"},
    {Text::WarningsShown, "All warnings are shown again.", "すべての警告が再び表示されます。"},
    {Text::WarningsKept, "The warnings stay hidden: %1", "警告は表示されないままです: %1"},
    {Text::Help, "Help", "ヘルプ"},
    {Text::NoHelp, "There is no help page here. Open Print Setting or Color Setting and press F1.",
     "このページのヘルプはありません。印刷設定またはカラー設定を開いてF1キーを押してください。"},
    {Text::General, "General", "一般"},
    {Text::Summary, "Summary", "設定一覧"},
    {Text::Printer, "Printer", "プリンター"},
    {Text::SamplePrinter, "%1 (sample, prints to a folder)", "%1(サンプル、フォルダーに印刷)"},
    {Text::LookingForPrinters, "Looking for printers…", "プリンターを探しています…"},
    {Text::NoPrinter, "No printer can be used here. Choose one with a PPD on the General page.",
     "使用できるプリンターがありません。「一般」でPPDのあるプリンターを選んでください。"},
    {Text::Folder, "Print to folder", "印刷先フォルダー"},
    {Text::ChooseFolder, "Browse…", "参照…"},
    {Text::Paper, "Paper", "用紙"},
    {Text::FreeSize, "Free size…", "自由サイズ…"},
    {Text::Width, "Width", "幅"},
    {Text::Height, "Height", "高さ"},
    {Text::Unit, "Unit", "単位"},
    {Text::Millimetres, "mm", "mm"},
    {Text::Inches, "in", "インチ"},
    {Text::Points, "pt", "ポイント"},
    {Text::SizeLimits, "Width %1 to %2, height %3 to %4", "幅 %1~%2、高さ %3~%4"},
    {Text::Copies, "Copies", "部数"},
    {Text::Pages, "Pages", "ページ"},
    {Text::AllPages, "All, or for example 1-4, 7", "すべて、または例: 1-4, 7"},
    {Text::BadPages, "Pages are numbers and ranges, such as \"1-4, 7\". Leave the field empty to print all of them.",
     "ページは「1-4, 7」のように番号と範囲で指定してください。すべて印刷するには空欄にします。"},
    {Text::TwoSided, "Two-sided", "両面印刷"},
    {Text::Output, "Output", "出力先"},
    {Text::ColorMatching, "Colors matched by", "カラーマッチング"},
    {Text::DriverMatches, "Printer driver", "プリンタードライバー"},
    {Text::ApplicationMatches, "Application", "アプリケーション"},
    {Text::BecauseYouChose, "Because you chose %1: %2", "%1 を選んだため: %2"},
    {Text::IsNow, "%1 is now %2", "%1 は %2 になりました"},
    {Text::NotMarked, "not set", "未設定"},
    {Text::Separator, ", ", "、"},
    {Text::CannotBeTogether, "“%1” cannot be used together with %2.", "「%1」は%2と同時に使用できません。"},
    {Text::And, " and ", "、"},
    {Text::NotAvailable, "Not available with the other choices as they are now.",
     "ほかの設定が今のままでは使用できません。"},
    {Text::ChoicesNotAvailable, "Not available now: %1", "今は選べない項目: %1"},
    {Text::Option, "Option", "項目"},
    {Text::Choice, "Choice", "設定"},
    {Text::Changed, "Changed", "変更"},
    {Text::ChangedMark, "● changed", "● 変更済み"},
    {Text::NothingToShow, "This printer has no settings to list.", "このプリンターには一覧にする設定がありません。"},
    {Text::CopySummary, "Copy", "コピー"},
    {Text::SummaryCopied, "The summary has been copied.", "設定一覧をコピーしました。"},
    {Text::Printing, "Printing", "印刷中"},
    {Text::PrintingDocument, "Sending “%1”…", "「%1」を送信しています…"},
    {Text::CancellingPrint, "Cancelling…", "キャンセルしています…"},
    {Text::PrintingCancelled, "Printing was cancelled.", "印刷をキャンセルしました。"},
    {Text::NotPrinted, "The document was not printed.", "文書は印刷されませんでした。"},
    {Text::KeptChoices, "Your choices are kept. Change what is wrong and print again.",
     "設定はそのまま残っています。問題を直してから、もう一度印刷してください。"},
    {Text::PrintedWithNote, "The document was sent.", "文書を送信しました。"},
    {Text::NoDocument, "There is no document to print.", "印刷する文書がありません。"},
    {Text::PrinterCannotBeUsed, "The printer cannot be used: %1", "このプリンターは使用できません: %1"},
    {Text::ActionFailed, "That could not be carried out: %1", "実行できませんでした: %1"},
    {Text::ViewIncomplete, "This panel cannot be shown: %1", "このパネルは表示できません: %1"},
};

static_assert(std::size(kTexts) == static_cast<std::size_t>(Text::Count));
static_assert(
    [] {
        for (std::size_t index = 0; index < std::size(kTexts); ++index)
            if (static_cast<std::size_t>(kTexts[index].text) != index)
                return false;
        return true;
    }(),
    "the rows stand in the order of the names");

} // namespace

Language windowLanguage(const std::vector<std::string>& languages) {
    for (const std::string& language : languages) {
        const std::string code = toolkit::languageCode(language);
        if (code == "ja")
            return Language::Japanese;
        if (code == "en")
            return Language::English;
    }
    return Language::English;
}

QString windowText(Text text, Language language) {
    const Row& row = kTexts[static_cast<std::size_t>(text)];
    return QString::fromUtf8(language == Language::Japanese ? row.japanese : row.english);
}

} // namespace host
