#pragma once

#include <filesystem>

namespace glimmerly {

/// Shows captures. Main thread only.
class OverlayPresenter {
public:
    virtual ~OverlayPresenter() = default;

    /// Shows the capture file, which is the presenter's to delete from then on.
    virtual void presentOverlay(const std::filesystem::path& captureImageURL) = 0;
    /// Takes down what is shown and deletes its file; does nothing when there is nothing.
    virtual void closeOverlay() = 0;
};

} // namespace glimmerly
