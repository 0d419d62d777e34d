#pragma once

#include "toolkit/export.h"

#include <string>
#include <string_view>
#include <vector>

namespace toolkit {

/// The user's languages, the first one preferred: those of LANGUAGE (a list with ":"), else of the first of LC_ALL,
/// LC_MESSAGES and LANG that is set. As gettext does, LANGUAGE is not looked at where the locale is "C" or "POSIX".
/// "ja_JP.UTF-8" gives "ja". "en" where nothing says otherwise: the list is never empty.
CV_TOOLKIT_EXPORT std::vector<std::string> preferredLanguages();

/// The language that a locale's name or a language tag stands for, as catalogues are named: the code that it begins
/// with, "ja" for "ja_JP.UTF-8" and for "ja-JP"; of Chinese with a region for its script, "zh_CN" for "zh", "zh-Hans"
/// and "zh_SG.UTF-8", "zh_TW" for "zh-Hant" and "zh_HK". Empty for "C", "POSIX" and what is no such name.
CV_TOOLKIT_EXPORT std::string languageCode(std::string_view locale);

} // namespace toolkit
