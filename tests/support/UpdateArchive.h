#pragma once

#include <sodium.h>

#include <archive.h>
#include <archive_entry.h>

#include <array>
#include <cstddef>
#include <span>
#include <stdexcept>
#include <string>
#include <vector>

namespace glimmerly {

inline std::span<const std::byte> bytesOf(const std::string& text) {
    return std::as_bytes(std::span(text));
}

/// One entry of an archive, whatever it may be.
struct TestEntry {
    std::string path;
    std::string content{};
    unsigned kind = AE_IFREG;
    unsigned mode = 0644;
    std::string target{};     ///< of a symbolic link
    std::string sameFileAs{}; ///< a hard link
};

enum class Compression { gzip, zstd };

/// The bytes of a tar archive of `entries`, which may be as wicked as wanted.
inline std::string archiveOf(const std::vector<TestEntry>& entries,
                             Compression compression = Compression::gzip) {
    std::string bytes;
    archive* writer = ::archive_write_new();
    (void)::archive_write_set_format_pax_restricted(writer);
    (void)(compression == Compression::gzip ? ::archive_write_add_filter_gzip(writer)
                                            : ::archive_write_add_filter_zstd(writer));
    (void)::archive_write_set_bytes_in_last_block(writer, 1); // no padding
    (void)::archive_write_open(
        writer, &bytes, nullptr,
        [](archive*, void* data, const void* chunk, std::size_t size) {
            static_cast<std::string*>(data)->append(static_cast<const char*>(chunk), size);
            return static_cast<la_ssize_t>(size);
        },
        nullptr);
    for (const auto& entry : entries) {
        archive_entry* header = ::archive_entry_new();
        ::archive_entry_set_pathname(header, entry.path.c_str());
        ::archive_entry_set_filetype(header, entry.kind);
        ::archive_entry_set_perm(header, static_cast<mode_t>(entry.mode));
        ::archive_entry_set_size(header, static_cast<la_int64_t>(entry.content.size()));
        if (!entry.target.empty())
            ::archive_entry_set_symlink(header, entry.target.c_str());
        if (!entry.sameFileAs.empty())
            ::archive_entry_set_hardlink(header, entry.sameFileAs.c_str());
        (void)::archive_write_header(writer, header);
        (void)::archive_write_data(writer, entry.content.data(), entry.content.size());
        ::archive_entry_free(header);
    }
    (void)::archive_write_close(writer);
    (void)::archive_write_free(writer);
    return bytes;
}

/// An archive as our packaging makes it, of a version whose program is a shell script.
inline std::string archiveOfVersion(const std::string& version, const std::string& script) {
    return archiveOf({{.path = "G/bin/glimmerly", .content = "#!/bin/sh\n" + script, .mode = 0755},
                      {.path = "G/share/glimmerly/archive-contents",
                       .content = version + "\nbin/glimmerly\nshare/glimmerly/archive-contents\n"}});
}
inline std::string archiveOfVersion(const std::string& version) {
    return archiveOfVersion(version, "exit 0 # " + version);
}

/// A pair of keys made anew, to sign updates with.
class SigningKey {
public:
    SigningKey() {
        if (::sodium_init() < 0)
            throw std::runtime_error("no libsodium");
        (void)::crypto_sign_keypair(public_.data(), secret_.data());
    }
    [[nodiscard]] std::string publicKey() const { return base64(public_); }
    [[nodiscard]] std::string signatureOf(const std::string& content) const {
        std::array<unsigned char, crypto_sign_BYTES> signature{};
        (void)::crypto_sign_detached(signature.data(), nullptr,
                                     reinterpret_cast<const unsigned char*>(content.data()), content.size(),
                                     secret_.data());
        return base64(signature);
    }

private:
    static std::string base64(std::span<const unsigned char> bytes) {
        constexpr int variant = sodium_base64_VARIANT_ORIGINAL;
        std::string text(sodium_base64_encoded_len(bytes.size(), variant), '\0');
        (void)::sodium_bin2base64(text.data(), text.size(), bytes.data(), bytes.size(), variant);
        text.pop_back(); // the NUL
        return text;
    }

    std::array<unsigned char, crypto_sign_PUBLICKEYBYTES> public_{};
    std::array<unsigned char, crypto_sign_SECRETKEYBYTES> secret_{};
};

} // namespace glimmerly
