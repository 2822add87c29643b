#pragma once

#include <QTranslator>

namespace glimmerly {

/// Calls the key that Qt names Meta what is printed on it and what these desktops call it: Super.
class KeyNames : public QTranslator {
public:
    [[nodiscard]] bool isEmpty() const override { return false; }
    [[nodiscard]] QString translate(const char* context, const char* text, const char* disambiguation,
                                    int n) const override;
};

} // namespace glimmerly
