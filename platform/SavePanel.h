#pragma once

#include <filesystem>
#include <optional>
#include <string>

namespace glimmerly {

struct SavePanelRequest {
    std::string nameField; ///< the file name to begin with, UTF-8
};

enum class SavePanelResponse { cancel = 0, ok = 1 };

struct SavePanelAnswer {
    SavePanelResponse response = SavePanelResponse::cancel;
    std::optional<std::filesystem::path> location; ///< what the user chose
};

/// Asks where to save a PNG file. Other types are not offered, directories can be made, extensions are shown.
class SavePanel {
public:
    virtual ~SavePanel() = default;

    /// Returns once the user has answered; the main loop goes on meanwhile.
    virtual SavePanelAnswer runModal(const SavePanelRequest& request) = 0;
};

} // namespace glimmerly
