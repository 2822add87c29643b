#pragma once

#include <QAbstractButton>
#include <QCoreApplication>
#include <QImage>
#include <QLabel>
#include <QScrollArea>
#include <gtest/gtest.h>

#include <stdexcept>
#include <string>
#include <vector>

namespace glimmerly {

/// The widget within `root` of that type with that accessible name; throws when there is none to be seen.
template <typename T>
T& widgetNamed(const QString& name, const QWidget& root) {
    for (auto* candidate : root.findChildren<T*>()) {
        if (candidate->accessibleName() == name && candidate->isVisibleTo(&root))
            return *candidate;
    }
    throw std::runtime_error("no " + name.toStdString());
}

/// Every text that can be seen in labels of `window`, in the order in which they were made.
inline std::vector<std::string> shownTexts(const QWidget& window) {
    std::vector<std::string> found;
    for (const auto* label : window.findChildren<QLabel*>()) {
        if (label->isVisible())
            found.push_back(label->text().toStdString());
    }
    return found;
}

/// Makes the texts of `window` a third longer, as in another language, and expects that of this size it still
/// shows all of them, scrolled at most from top to bottom.
inline void expectThatLongerTextsFit(QWidget& window, QSize size) {
    const auto longer = [](const QString& text) { return text + text.left(text.size() / 3); };
    for (auto* label : window.findChildren<QLabel*>())
        label->setText(longer(label->text()));
    for (auto* button : window.findChildren<QAbstractButton*>())
        button->setText(longer(button->text()));
    window.setFixedSize(size);
    QCoreApplication::processEvents();
    for (const auto* area : window.findChildren<QScrollArea*>()) {
        if (!area->isVisible())
            continue;
        EXPECT_EQ(area->widget()->width(), area->viewport()->width()) << "nothing to scroll sideways";
        for (const auto* child : area->widget()->findChildren<QWidget*>()) {
            SCOPED_TRACE(child->accessibleName().toStdString());
            const auto inPage = QRect(child->mapTo(area->widget(), QPoint()), child->size());
            EXPECT_TRUE(area->widget()->rect().contains(inPage));
            EXPECT_GE(child->height(), child->hasHeightForWidth() ? child->heightForWidth(child->width())
                                                                  : child->minimumSizeHint().height());
        }
    }
}

/// The smallest rectangle around everything that is not of the colour `ground`.
inline QRect inkOf(const QImage& picture, const QColor& ground) {
    QRect ink;
    for (int y = 0; y < picture.height(); ++y) {
        for (int x = 0; x < picture.width(); ++x) {
            if (picture.pixelColor(x, y) != ground)
                ink |= QRect(x, y, 1, 1);
        }
    }
    return ink;
}

} // namespace glimmerly
