#pragma once

#include "toolkit/bundle.h"

#include <filesystem>
#include <memory>
#include <string>
#include <vector>

namespace toolkit {

/// The gettext catalogues `<folder>/<language>/<domain>.mo` of these languages, in this order, then the English one.
/// A catalogue that is missing or broken is passed over.
CV_TOOLKIT_EXPORT std::unique_ptr<TextTable> openTextCatalogues(const std::filesystem::path& folder,
                                                                const std::string& domain,
                                                                const std::vector<std::string>& languages);

} // namespace toolkit
