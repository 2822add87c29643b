#include "platform/qt/QtSavePanel.h"

#include "ui/QtConversions.h"

#include <QChildEvent>
#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QStandardPaths>

namespace glimmerly {

namespace {

/// The user's folder of pictures, where there is one.
QString firstDirectory() {
    const QString pictures = QStandardPaths::writableLocation(QStandardPaths::PicturesLocation);
    return QFileInfo(pictures).isDir() ? pictures : QDir::homePath();
}

/// The caller waits, but other windows of ours stay in use: a screenshot may be asked for meanwhile, and its
/// overlay must take keys although the panel, or its question whether to replace a file, is still open.
class Panel : public QFileDialog {
public:
    Panel() { setWindowModality(Qt::WindowModal); }

protected:
    void childEvent(QChildEvent* event) override {
        QFileDialog::childEvent(event);
        if (auto* question = qobject_cast<QDialog*>(event->child()); question != nullptr && event->polished())
            question->setWindowModality(Qt::WindowModal);
    }
};

} // namespace

SavePanelAnswer QtSavePanel::runModal(const SavePanelRequest& request) {
    Panel panel;
    panel.setAcceptMode(QFileDialog::AcceptSave);
    panel.setFileMode(QFileDialog::AnyFile);
    panel.setMimeTypeFilters({"image/png"});
    // Added by the dialog itself, so that it asks before it replaces the file that is really written.
    panel.setDefaultSuffix("png");
    panel.setDirectory(QFileInfo(directory_).isDir() ? directory_ : firstDirectory());
    panel.selectFile(toQString(request.nameField));
    if (panel.exec() != QDialog::Accepted)
        return {};
    const QStringList chosen = panel.selectedFiles();
    if (chosen.isEmpty() || chosen.front().isEmpty())
        return {SavePanelResponse::ok, std::nullopt};
    const QFileInfo file(chosen.front());
    directory_ = file.absolutePath(); // not the panel's, which does not follow a path that is typed
    return {SavePanelResponse::ok, file.filesystemAbsoluteFilePath()};
}

} // namespace glimmerly
