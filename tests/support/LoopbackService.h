#pragma once

#include "tests/support/ProcessState.h"
#include "tests/support/ScratchDirectory.h"

#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QStringList>

#include <stdexcept>
#include <string>
#include <vector>

namespace glimmerly {

/// A certificate for 127.0.0.1, signed by itself.
struct TestCertificate {
    explicit TestCertificate(const std::filesystem::path& directory)
        : certificate(directory / "certificate.pem"), key(directory / "key.pem") {
        const QStringList arguments =
            QString("req -x509 -newkey ec -pkeyopt ec_paramgen_curve:prime256v1 -nodes"
                    " -subj /CN=test -addext subjectAltName=IP:127.0.0.1")
                .split(' ')
            << "-keyout" << key.c_str() << "-out" << certificate.c_str();
        QProcess openssl;
        openssl.start("openssl", arguments);
        if (!openssl.waitForFinished() || openssl.exitCode() != 0)
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
        QStringList arguments{LOOPBACK_SERVICE, record().c_str()};
        if (certificate != nullptr)
            arguments << certificate->certificate.c_str() << certificate->key.c_str();
        process_.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        process_.start("python3", arguments);
        while (!process_.canReadLine()) {
            if (!process_.waitForReadyRead(20'000))
                throw std::runtime_error("the service did not start");
        }
        port = process_.readLine().trimmed().toInt();
    }
    ~LoopbackService() {
        process_.kill();
        process_.waitForFinished();
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
    QProcess process_;
};

} // namespace glimmerly
