#include "platform/system/SystemInfo.h"

#include "base/BundleIdentifier.h"
#include "base/Utf8.h"
#include "base/Uuid.h"
#include "base/Whitespace.h"

#include <sodium/crypto_generichash.h>

#include <sys/utsname.h>
#include <unistd.h>

#include <array>
#include <fstream>
#include <optional>

namespace glimmerly {

namespace {

#if defined(__x86_64__)
constexpr auto builtFor = "x86_64";
#elif defined(__aarch64__)
constexpr auto builtFor = "arm64";
#else
constexpr auto builtFor = "unknown";
#endif

/// The first line of the file that starts with `prefix`, without it.
std::optional<std::string> lineOf(const std::filesystem::path& file, std::string_view prefix = {}) {
    std::ifstream stream(file);
    for (std::string line; std::getline(stream, line);) {
        if (line.starts_with(prefix))
            return std::string(trimmedWhitespace(line.substr(prefix.size())));
    }
    return std::nullopt;
}

/// A value of os-release without its quotes, and with what they made plain.
std::string unquoted(std::string_view value) {
    const bool isQuoted =
        value.size() >= 2 && value.front() == value.back() && (value.front() == '"' || value.front() == '\'');
    if (isQuoted)
        value = value.substr(1, value.size() - 2);
    std::string text;
    for (std::size_t i = 0; i < value.size(); ++i) {
        if (value[i] == '\\' && i + 1 < value.size())
            ++i;
        text += value[i];
    }
    return text;
}

std::string osVersion(const std::filesystem::path& root) {
    for (const auto* file : {"etc/os-release", "usr/lib/os-release"}) {
        if (const auto name = lineOf(root / file, "PRETTY_NAME="))
            return wellFormedUtf8(unquoted(*name));
    }
    utsname names{};
    ::uname(&names);
    return std::string(names.sysname) + " " + names.release;
}

/// What tells this computer from others; a system without an identifier has its name at least.
std::string identifierOf(const std::filesystem::path& root) {
    for (const auto* file : {"etc/machine-id", "var/lib/dbus/machine-id"}) {
        if (const auto id = lineOf(root / file); id && !id->empty())
            return *id;
    }
    std::array<char, 256> name{};
    ::gethostname(name.data(), name.size() - 1);
    return name.data();
}

/// The identifier is confidential, so what is sent is its hash, keyed for this program alone.
std::string machineID(std::string_view identifier) {
    const auto bytes = [](std::string_view text) {
        return reinterpret_cast<const unsigned char*>(text.data());
    };
    Uuid::Bytes hash{};
    crypto_generichash(hash.data(), hash.size(), bytes(identifier), identifier.size(),
                       bytes(bundleIdentifier), bundleIdentifier.size());
    return Uuid(hash).toString();
}

} // namespace

SystemInfo systemInfo(const std::filesystem::path& root) {
    return {osVersion(root), builtFor, machineID(identifierOf(root))};
}

} // namespace glimmerly
