#pragma once

#include <QLabel>

#include <string>
#include <vector>

namespace glimmerly {

/// Every text that can be seen in labels of `window`, in the order in which they were made.
inline std::vector<std::string> shownTexts(const QWidget& window) {
    std::vector<std::string> found;
    for (const auto* label : window.findChildren<QLabel*>()) {
        if (label->isVisible())
            found.push_back(label->text().toStdString());
    }
    return found;
}

} // namespace glimmerly
