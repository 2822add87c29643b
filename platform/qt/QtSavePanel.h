#pragma once

#include "platform/SavePanel.h"

namespace glimmerly {

/// Qt's file dialog, or the desktop's own where Qt brings it along.
class QtSavePanel : public SavePanel {
public:
    SavePanelAnswer runModal(const SavePanelRequest& request) override;
};

} // namespace glimmerly
