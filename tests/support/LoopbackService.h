#pragma once

#include "tests/support/ProcessState.h"
#include "tests/support/ScratchDirectory.h"
#include "tests/support/desktop/ChildProcess.h"
#include "tests/support/desktop/WaitUntil.h"

#include <QJsonDocument>
#include <QJsonObject>

#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

namespace glimmerly {

/// A certificate for 127.0.0.1, signed by itself.
struct TestCertificate {
    explicit TestCertificate(const std::filesystem::path& directory)
        : certificate(directory / "certificate.pem"), key(directory / "key.pem") {
        const auto made = ChildProcess::outputOf(
            {.command = {"openssl", "req", "-x509", "-newkey", "ec", "-pkeyopt",
                         "ec_paramgen_curve:prime256v1", "-nodes", "-subj", "/CN=test", "-addext",
                         "subjectAltName=IP:127.0.0.1", "-keyout", key, "-out", certificate}});
        if (!made)
            throw std::runtime_error("openssl made no certificate");
    }

    std::filesystem::path certificate;
    std::filesystem::path key;
};

/// A web service in a process of its own that misbehaves as told. Requests go there without a proxy.
class LoopbackService {
public:
    explicit LoopbackService(const TestCertificate* certificate = nullptr)
        : scheme_(certificate != nullptr ? "https" : "http") {
        const auto said = directory_.path() / "port";
        std::vector<std::string> command{"python3", LOOPBACK_SERVICE, record()};
        if (certificate != nullptr)
            command.insert(command.end(), {certificate->certificate, certificate->key});
        process_.emplace(ChildProcess::Options{.command = command, .output = said});
        if (!waitUntil([&] { return contentOf(said).ends_with('\n'); }))
            throw std::runtime_error("the service did not start");
        port = std::stoi(contentOf(said));
    }
    LoopbackService(const LoopbackService&) = delete;
    LoopbackService& operator=(const LoopbackService&) = delete;

    /// The base URL below which it behaves like that; see service.py.
    [[nodiscard]] std::string url(const std::string& behaviour, const std::string& host = "127.0.0.1") const {
        return scheme_ + "://" + host + ":" + std::to_string(port) + "/" + behaviour;
    }
    /// What GET requests ask for lies there.
    [[nodiscard]] const std::filesystem::path& files() const { return directory_.path(); }
    /// What has arrived: "path", "type", "text" and "json", the body and what a parser made of it.
    [[nodiscard]] std::vector<QJsonObject> requests() const {
        std::vector<QJsonObject> found;
        for (const QByteArray& line : QByteArray::fromStdString(contentOf(record())).split('\n')) {
            const auto object = QJsonDocument::fromJson(line).object();
            if (!object.isEmpty())
                found.push_back(object);
        }
        return found;
    }

    int port = 0;

private:
    [[nodiscard]] std::filesystem::path record() const { return directory_.path() / "requests"; }

    ScratchDirectory directory_;
    ScopedEnvironment noProxy_{"no_proxy", "127.0.0.1,localhost"};
    std::string scheme_;
    std::optional<ChildProcess> process_;
};

} // namespace glimmerly
