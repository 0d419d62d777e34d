#pragma once

#include "imaging/picture.h"

#include <filesystem>
#include <optional>

/// The picture in the file; none where it cannot be read, which one line on standard error then says. A file that has
/// not changed is read once in a process: the panel asks for its picture in every constraint pass.
std::optional<imaging::Picture> referencePictureAtPath(const std::filesystem::path& path);
