#include "app/MenuShortcut.h"

#include <QList>
#include <QString>

#include <array>

namespace glimmerly {

namespace {

struct NamedCharacter {
    char32_t character;
    Qt::Key key;
};

/// Characters that Qt knows by the key that types them.
constexpr std::array namedCharacters{
    NamedCharacter{U'\b', Qt::Key_Backspace}, NamedCharacter{U'\t', Qt::Key_Tab},
    NamedCharacter{U'\r', Qt::Key_Return},    NamedCharacter{U'\x3', Qt::Key_Enter},
    NamedCharacter{U'\x1b', Qt::Key_Escape},  NamedCharacter{U'\x7f', Qt::Key_Delete},
};

Qt::Key keyFor(const std::string& character) {
    const auto typed = QString::fromStdString(character).toUcs4();
    if (typed.size() != 1)
        return Qt::Key_unknown;
    for (const auto& named : namedCharacters) {
        if (named.character == typed.front())
            return named.key;
    }
    // Qt numbers letter keys by their capitals, where a letter has one.
    return static_cast<Qt::Key>(QChar::toUpper(typed.front()));
}

Qt::KeyboardModifiers modifiersFor(std::uint64_t mask) {
    const Modifiers modifiers = Modifiers::fromEventModifierFlags(mask);
    Qt::KeyboardModifiers qt;
    qt.setFlag(Qt::ControlModifier, modifiers.contains(Modifiers::control));
    qt.setFlag(Qt::AltModifier, modifiers.contains(Modifiers::option));
    qt.setFlag(Qt::ShiftModifier, modifiers.contains(Modifiers::shift));
    qt.setFlag(Qt::MetaModifier, modifiers.contains(Modifiers::command));
    return qt;
}

} // namespace

QKeySequence menuShortcut(const KeyEquivalent& equivalent) {
    const Qt::Key key = keyFor(equivalent.character);
    if (key == Qt::Key_unknown)
        return {};
    return QKeySequence(QKeyCombination(modifiersFor(equivalent.modifierMask), key));
}

} // namespace glimmerly
