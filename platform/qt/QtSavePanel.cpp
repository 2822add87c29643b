#include "platform/qt/QtSavePanel.h"

#include "platform/qt/QtConversions.h"

#include <QFileDialog>
#include <QFileInfo>

namespace glimmerly {

SavePanelAnswer QtSavePanel::runModal(const SavePanelRequest& request) {
    QFileDialog panel;
    panel.setAcceptMode(QFileDialog::AcceptSave);
    panel.setFileMode(QFileDialog::AnyFile);
    panel.setMimeTypeFilters({"image/png"});
    // Added by the dialog itself, so that it asks before it replaces the file that is really written.
    panel.setDefaultSuffix("png");
    panel.selectFile(toQString(request.nameField));
    if (panel.exec() != QDialog::Accepted)
        return {};
    const QStringList chosen = panel.selectedFiles();
    if (chosen.isEmpty() || chosen.front().isEmpty())
        return {SavePanelResponse::ok, std::nullopt};
    return {SavePanelResponse::ok, QFileInfo(chosen.front()).filesystemAbsoluteFilePath()};
}

} // namespace glimmerly
