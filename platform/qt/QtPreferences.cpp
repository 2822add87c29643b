#include "platform/qt/QtPreferences.h"

#include "base/BundleIdentifier.h"
#include "platform/files/Directories.h"
#include "platform/files/FileDescriptor.h"
#include "ui/QtConversions.h"

#include <QStringList>

#include <fcntl.h>
#include <sys/stat.h>

namespace glimmerly {

namespace {

/// QSettings keeps the permissions of the file that it replaces, so that file must be there first.
void makePrivate(const std::filesystem::path& file) {
    const auto directory = file.parent_path();
    if (!makeDirectories(directory))
        return; // then nothing can be written there either
    ::chmod(directory.c_str(), S_IRWXU);
    const FileDescriptor opened(::open(file.c_str(), O_RDONLY | O_CREAT | O_CLOEXEC, S_IRUSR | S_IWUSR));
    if (opened)
        ::fchmod(opened.get(), S_IRUSR | S_IWUSR);
}

/// An INI file tells bytes from text only by how QSettings itself writes them. Whoever edits it by hand
/// writes text, or leaves out the quotes: then a comma makes it a list.
QByteArray bytesOf(const QVariant& value) {
    if (value.typeId() == QMetaType::QByteArray)
        return value.toByteArray();
    QByteArray text = value.canConvert<QStringList>() ? value.toStringList().join(QLatin1Char(',')).toUtf8()
                                                      : value.toString().toUtf8();
    constexpr std::string_view marker = "@ByteArray(";
    if (text.startsWith(marker.data()) && text.endsWith(')'))
        text = text.sliced(marker.size(), text.size() - static_cast<qsizetype>(marker.size()) - 1);
    return text;
}

} // namespace

std::optional<std::filesystem::path> preferencesFile() {
    const auto directory = configurationDirectory();
    if (!directory)
        return {};
    return *directory / bundleIdentifier / "preferences.ini";
}

QtPreferences::QtPreferences(const std::optional<std::filesystem::path>& file) {
    if (!file)
        return;
    makePrivate(*file);
    settings_.emplace(toQString(file->native()), QSettings::IniFormat);
}

std::optional<std::string> QtPreferences::data(std::string_view key) const {
    if (!settings_ || !settings_->contains(toQString(key)))
        return {};
    return bytesOf(settings_->value(toQString(key))).toStdString();
}

void QtPreferences::setData(std::string_view key, std::string_view bytes) {
    if (!settings_)
        return;
    settings_->setValue(toQString(key), QByteArray(bytes.data(), static_cast<qsizetype>(bytes.size())));
    settings_->sync();
}

void QtPreferences::setBool(std::string_view key, bool value) {
    if (!settings_)
        return;
    settings_->setValue(toQString(key), value);
    settings_->sync();
}

void QtPreferences::remove(std::string_view key) {
    if (!settings_)
        return;
    settings_->remove(toQString(key));
    settings_->sync();
}

} // namespace glimmerly
