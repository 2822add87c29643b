#include "platform/qt/QtSavePanel.h"

#include "platform/qt/AlertBox.h"
#include "ui/CommonText.h"
#include "ui/QtConversions.h"

#include <QChildEvent>
#include <QCompleter>
#include <QDir>
#include <QFileDialog>
#include <QFileIconProvider>
#include <QFileInfo>
#include <QMimeDatabase>
#include <QPointer>
#include <QStandardPaths>

namespace glimmerly {

namespace {

/// The user's folder of pictures, where there is one.
QString firstDirectory() {
    const QString pictures = QStandardPaths::writableLocation(QStandardPaths::PicturesLocation);
    return QFileInfo(pictures).isDir() ? pictures : QDir::homePath();
}

/// The file that is written for a name typed. Other types are not offered, so each name ends as a PNG file's.
std::filesystem::path pngFile(QString typed) {
    while (typed.endsWith('.'))
        typed.chop(1);
    const auto extension = QFileInfo(typed).filesystemFilePath().extension().string();
    if (QString::fromStdString(extension).compare(".png", Qt::CaseInsensitive) != 0)
        typed += ".png";
    return QFileInfo(typed).filesystemAbsoluteFilePath();
}

/// Why no file can be written there, for the user; none when nothing is known against it.
std::optional<Alert> objectionTo(const QFileInfo& file) {
    const auto alert = [](const QString& message, const QString& explanation) {
        return Alert{.messageText = message.toStdString(),
                     .informativeText = explanation.toStdString(),
                     .buttons = {common_text::ok}};
    };
    const QFileInfo folder(file.absolutePath());
    if (!folder.isDir())
        return alert(QString("There is no folder “%1”.").arg(folder.fileName()), folder.filePath());
    if (!folder.isWritable())
        return alert(QString("The folder “%1” cannot be written to.").arg(folder.fileName()),
                     "Choose another folder.");
    if (file.isDir())
        return alert(QString("“%1” is a folder.").arg(file.fileName()), "Choose another name.");
    return std::nullopt;
}

/// Tells what files are by their names. Qt looks into each to find out, on the main thread: a folder far
/// away, or a file that nobody writes to, would hold the panel up.
class NamesAlone : public QFileIconProvider {
public:
    QIcon icon(const QFileInfo& file) const override {
        return QFileIconProvider::icon(file.isDir() ? Folder : File);
    }
    QString type(const QFileInfo& file) const override {
        return file.isDir() ? QString("Folder")
                            : types_.mimeTypeForFile(file, QMimeDatabase::MatchExtension).comment();
    }

private:
    QMimeDatabase types_;
};

/// Goes away only with an answer by which the picture can be saved: the panel has the last that is left of
/// it. Modal to no other window, and neither is what it asks: an overlay may open meanwhile.
class Panel : public QFileDialog {
public:
    Panel() { setWindowModality(Qt::WindowModal); }

    [[nodiscard]] std::optional<std::filesystem::path> file() const {
        const QStringList typed = selectedFiles();
        if (typed.isEmpty() || typed.front().isEmpty())
            return std::nullopt;
        return pngFile(typed.front());
    }

protected:
    void accept() override {
        const auto chosen = file();
        const bool entersFolder = chosen && QFileInfo(selectedFiles().front()).isDir();
        if (!chosen || entersFolder || mayBeWritten(QFileInfo(*chosen)))
            QFileDialog::accept();
    }
    /// Qt asks too, such as before it deletes a file.
    void childEvent(QChildEvent* event) override {
        QFileDialog::childEvent(event);
        if (auto* question = qobject_cast<QDialog*>(event->child()); question != nullptr && event->polished())
            question->setWindowModality(Qt::WindowModal);
    }

private:
    bool mayBeWritten(const QFileInfo& file) {
        if (const auto objection = objectionTo(file)) {
            ask(*objection);
            return false;
        }
        constexpr int replace = 0;
        const auto question = QString("“%1” already exists. Do you want to replace it?").arg(file.fileName());
        return !file.exists() || ask({.messageText = question.toStdString(),
                                      .informativeText = "What is in it now will be lost.",
                                      .buttons = {"Replace", "Cancel"},
                                      .preferredButton = 1}) == replace;
    }
    int ask(const Alert& alert) {
        // Names that are found only now would be listed above the question and take its keys.
        const QPointer completer = findChild<QCompleter*>();
        QWidget* const field = completer ? completer->widget() : nullptr;
        if (completer)
            completer->setWidget(nullptr);
        AlertBox box(alert, this);
        box.exec();
        if (completer)
            completer->setWidget(field);
        return box.choice();
    }
};

} // namespace

SavePanelAnswer QtSavePanel::runModal(const SavePanelRequest& request) {
    NamesAlone icons; // outlives the panel
    Panel panel;
    panel.setIconProvider(&icons);
    panel.setAcceptMode(QFileDialog::AcceptSave);
    panel.setFileMode(QFileDialog::AnyFile);
    panel.setMimeTypeFilters({"image/png"});
    // Asked here, about the very file that is written: Qt asks about the name as it is typed.
    panel.setOption(QFileDialog::DontConfirmOverwrite);
    panel.setOption(QFileDialog::DontUseNativeDialog);
    panel.setDirectory(QFileInfo(directory_).isDir() ? directory_ : firstDirectory());
    panel.selectFile(toQString(request.nameField));
    if (panel.exec() != QDialog::Accepted)
        return {};
    const auto file = panel.file();
    if (file) // not the panel's, which does not follow a path that is typed
        directory_ = QFileInfo(*file).absolutePath();
    return {SavePanelResponse::ok, file};
}

} // namespace glimmerly
