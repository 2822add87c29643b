#pragma once

#include "platform/StatusBar.h"

#include <QIcon>
#include <QMenu>
#include <QString>

#include <string>
#include <vector>

namespace glimmerly {

/// Keeps what it was given; the menu is gone when the test says so.
class FakeStatusItem : public StatusItem {
public:
    void show() override { ++shows; }
    void setMenu(QMenu& newMenu) override { menu = &newMenu; }
    void setTemplateImage(const QIcon& newImage, const QString& newDescription) override {
        image = newImage;
        description = newDescription;
    }
    void setTitle(const QString& newTitle) override { title = newTitle; }
    [[nodiscard]] bool hasHost() const override { return isHosted; }
    void popUpMenu(const QPoint&) override { ++popUps; }
    void whenMenuHasGone(std::function<void()> action) override { waiting.push_back(std::move(action)); }

    void menuHasGone() {
        for (const auto& action : std::exchange(waiting, {}))
            action();
    }

    int shows = 0;
    int popUps = 0;
    bool isHosted = true;
    QMenu* menu = nullptr;
    QIcon image;
    QString description;
    QString title;
    std::vector<std::function<void()>> waiting;
};

} // namespace glimmerly
