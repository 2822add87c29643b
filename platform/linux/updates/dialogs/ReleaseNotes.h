#pragma once

#include "platform/linux/updates/feed/Appcast.h"

#include <QTextBrowser>

namespace glimmerly {

/// Shows the release notes of an update. Of rich text only structure and emphasis are taken over: no colours,
/// no sizes, no pictures, nothing that is loaded from anywhere. A click opens links to HTTPS pages.
class ReleaseNotes : public QTextBrowser {
public:
    ReleaseNotes(const std::string& notes, NotesFormat format, QWidget* parent = nullptr);

protected:
    void changeEvent(QEvent* event) override;
    QVariant loadResource(int type, const QUrl& name) override;

private:
    void fill();

    QString notes_;
    NotesFormat format_;
};

} // namespace glimmerly
