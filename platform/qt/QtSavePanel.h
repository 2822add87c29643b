#pragma once

#include "platform/SavePanel.h"

#include <QString>

namespace glimmerly {

/// Qt's file dialog on every desktop.
class QtSavePanel : public SavePanel {
public:
    SavePanelAnswer runModal(const SavePanelRequest& request) override;

private:
    QString directory_; ///< where the last picture was saved
};

} // namespace glimmerly
