#pragma once

#include "tests/e2e/support/Session.h"
#include "tests/support/LoopbackService.h"

#include <memory>

namespace glimmerly::e2e {

/// The program as `./dev package` makes it, version 1.0, unpacked in a user's home; a server with
/// version 2.0; and the user in front of both.
class Installation {
public:
    enum class Signer { us, somebodyElse };

    Installation();
    ~Installation();
    Installation(const Installation&) = delete;
    Installation& operator=(const Installation&) = delete;

    /// In place of those that there are, of a program that was started before.
    void setPreferences(const std::string& lines) const;
    /// Unpacks version 1.0 in place of whatever is there.
    void install() const;
    /// `endOfNewVersion` is the moment at which version 2.0, once installed, ends as by a fault: none, while
    /// it is "loading" or "starting".
    [[nodiscard]] std::unique_ptr<Glimmerly> start(const std::string& endOfNewVersion = "");
    /// On a file system with room for the download of the update and not for more.
    [[nodiscard]] std::unique_ptr<Glimmerly> startOnFullDisk();
    /// On a desktop that withholds the permission to see the screen.
    [[nodiscard]] std::unique_ptr<Glimmerly> startWithoutPermission();

    /// A feed that offers the archive as `version`; the server behaves like that when it is fetched.
    [[nodiscard]] std::string feed(const std::string& behaviour, Signer signer = Signer::us,
                                   const std::string& version = "2.0") const;
    /// One that offers, signed by us, `content` in the archive's place.
    [[nodiscard]] std::string feedFor(const std::string& content) const;
    /// Has the feed's address answer with `content`; `place` is a behaviour of the service, and a name.
    void serve(const std::string& place, const std::string& content);
    /// The archive of 2.0, where the server takes it from.
    [[nodiscard]] std::filesystem::path archive() const { return server_.files() / archiveName_; }

    [[nodiscard]] const std::filesystem::path& folder() const { return folder_; }
    /// What the folder holds, when its program belongs to it.
    [[nodiscard]] std::string version() const;
    /// True when nothing lies beside the folder.
    [[nodiscard]] bool isAlone() const;
    [[nodiscard]] std::vector<pid_t> programs() const;
    void killPrograms() const;

    [[nodiscard]] const Robot& robot() const { return robot_; }
    /// Chooses "Check for updates…" from the menu in the tray.
    [[nodiscard]] testing::AssertionResult check() const;
    /// The title of the updater's window; none while there is none with the keyboard.
    [[nodiscard]] std::optional<std::string> dialog() const;
    /// True while a window has the title, with the keyboard or without.
    [[nodiscard]] bool isShown(const std::string& title) const;
    [[nodiscard]] testing::AssertionResult waitFor(const std::string& title) const;
    /// Waits for the dialog, and presses Return there.
    [[nodiscard]] testing::AssertionResult accept(const std::string& title) const;

private:
    /// Where the menu opened; none when it did not.
    [[nodiscard]] std::optional<PixelRect> openMenu(Pixel icon) const;
    /// What a shell says to `command`; throws when it fails.
    std::string run(const std::string& command) const;
    void package(const std::string& version, const std::filesystem::path& output) const;
    [[nodiscard]] std::string signatureOf(const std::filesystem::path& file, Signer signer) const;
    [[nodiscard]] std::string feedOf(const std::string& item) const;
    [[nodiscard]] std::unique_ptr<Glimmerly> start(Environment environment,
                                                   const std::function<void()>& prepareDisk);

    ScratchDirectory scratch_;
    TestCertificate certificate_{scratch_.path()};
    LoopbackService server_{&certificate_};
    Desktop desktop_{{.panel = Panel::tint2}};
    Robot robot_{desktop_.client()};
    std::filesystem::path folder_ = desktop_.home() / "Apps/Glimmerly";
    std::string feedPlace_ = "file/feed.xml";
    std::string publicKey_;
    std::string archiveName_;
    std::string item_; ///< as the packaging wrote it
};

} // namespace glimmerly::e2e
