#pragma once

#include <optional>
#include <string>

namespace printing {

/// The paper of a job. A reading that fails is nullopt.
struct Paper {
    std::optional<std::string> name; ///< as the user knows it
    /// The page size of the PPD that it stands for; none for a user-defined size, which is no failure.
    std::optional<std::string> ppdName;
    std::optional<double> width, height; ///< points
};

/// The page format of a job.
struct PageFormat {
    std::optional<Paper> paper; ///< none: the format gives no paper
};

} // namespace printing
