#pragma once

#include "platform/Appearance.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QObject>

namespace glimmerly {

/// The colour scheme that the desktop announces through its portal; where there is none, or the user prefers
/// nothing, that of the colours Qt started with. The portal is asked without waiting: its answer comes as a
/// change.
class PortalAppearance : public QObject, public Appearance {
    Q_OBJECT

public:
    /// Made before the program gives Qt colours of its own.
    explicit PortalAppearance(QDBusConnection bus);

    [[nodiscard]] ColorScheme colorScheme() const override { return scheme_; }
    [[nodiscard]] Observation observe(std::function<void()> observer) override {
        return observers_.add(std::move(observer));
    }

private Q_SLOTS:
    void settingChanged(const QDBusMessage& signal);

private:
    void ask();
    void setPreference(const QVariant& value);

    QDBusConnection bus_;
    ColorScheme startingScheme_;
    ColorScheme scheme_;
    Observers observers_;
};

} // namespace glimmerly
