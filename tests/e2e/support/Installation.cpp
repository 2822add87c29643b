#include "tests/e2e/support/Installation.h"

#include "tests/e2e/support/Mounts.h"
#include "tests/e2e/support/Tray.h"

#include <algorithm>
#include <csignal>
#include <regex>
#include <stdexcept>

namespace glimmerly::e2e {

namespace {

namespace fs = std::filesystem;

constexpr auto authorities = "/etc/ssl/certs/ca-certificates.crt";

fs::path keyFile(const fs::path& directory, Installation::Signer signer) {
    return directory / (signer == Installation::Signer::us ? "us.pem" : "somebody-else.pem");
}

void replace(std::string& text, const std::string& from, const std::string& to) {
    const auto at = text.find(from);
    if (at == std::string::npos)
        throw std::runtime_error(text + " is without " + from);
    text.replace(at, from.size(), to);
}

} // namespace

Installation::Installation() {
    for (const auto signer : {Signer::us, Signer::somebodyElse})
        run("openssl genpkey -algorithm ed25519 -out " + keyFile(scratch_.path(), signer).string());
    publicKey_ = run("openssl pkey -pubout -outform DER -in " +
                     keyFile(scratch_.path(), Signer::us).string() + " | tail -c 32 | base64 -w0");
    package("1.0", scratch_.path() / "old");
    package("2.0", server_.files());
    for (const auto& name : namesIn(server_.files())) {
        if (name.ends_with(".tar.gz"))
            archiveName_ = name;
        else if (name.ends_with(".xml"))
            item_ = contentOf(server_.files() / name);
    }
    install();
    setPreferences("SUAutomaticallyChecksForUpdates=false\nmine=kept\n");
}

Installation::~Installation() {
    killPrograms();
}

std::string Installation::run(const std::string& command) const {
    auto output = ChildProcess::outputOf({.command = {"bash", "-c", "set -euo pipefail; " + command}});
    if (!output)
        throw std::runtime_error("failed: " + command);
    return *output;
}

void Installation::package(const std::string& version, const fs::path& output) const {
    const auto tree = scratch_.path() / version;
    fs::create_directories(tree / "bin");
    fs::create_directories(tree / "share");
    fs::copy_file(GLIMMERLY_BUNDLE_DOUBLE, tree / "bin/glimmerly");
    const std::vector<std::string> command{
        GLIMMERLY_PACKAGE, tree, version, output, keyFile(scratch_.path(), Signer::us), server_.url("file")};
    ChildProcess packaging({.command = command, .errors = scratch_.path() / "package.err"});
    if (packaging.waitForExit(std::chrono::minutes(1)) != 0)
        throw std::runtime_error("not packaged: " + contentOf(scratch_.path() / "package.err"));
}

void Installation::install() const {
    fs::remove_all(folder_.parent_path());
    fs::create_directories(folder_.parent_path());
    run("tar -xzf " + scratch_.path().string() + "/old/*.tar.gz -C " + folder_.parent_path().string());
}

void Installation::setPreferences(const std::string& lines) const {
    const auto folder = desktop_.home() / ".config/app.glimmerly.Glimmerly";
    fs::create_directories(folder);
    writeContent(folder / "preferences.ini", "[General]\nSUHasLaunchedBefore=true\n" + lines);
}

std::unique_ptr<Glimmerly> Installation::start(const std::string& endOfNewVersion) {
    return start({{"TEST_END_OF_NEW_VERSION", endOfNewVersion}}, [] {});
}

std::unique_ptr<Glimmerly> Installation::startWithoutPermission() {
    desktop_.startPortal("screenshot=no\n");
    return start({{"XDG_SESSION_TYPE", "wayland"}}, [] {});
}

std::unique_ptr<Glimmerly> Installation::startOnFullDisk() {
    const auto copy = scratch_.path() / "copy";
    fs::copy(folder_, copy, fs::copy_options::recursive);
    const auto size = std::stoull(run("du -sk " + copy.string())) + fs::file_size(archive()) / 1024 + 512;
    return start({}, [this, copy, options = "size=" + std::to_string(size) + "k"] {
        const auto apps = folder_.parent_path();
        if (mount("tmpfs", apps.c_str(), "tmpfs", 0, options.c_str()) != 0)
            _exit(125);
        fs::copy(copy, folder_, fs::copy_options::recursive);
    });
}

std::unique_ptr<Glimmerly> Installation::start(Environment environment,
                                               const std::function<void()>& prepareDisk) {
    environment.merge(Environment{{"TEST_FEED_URL", server_.url(feedPlace_)},
                                  {"TEST_UPDATE_PUBLIC_KEY", publicKey_},
                                  {"no_proxy", "127.0.0.1"}});
    const auto beforeExec = [certificate = certificate_.certificate, prepareDisk] {
        mountForThisProcessOnly();
        if (mount(certificate.c_str(), authorities, nullptr, MS_BIND, nullptr) != 0)
            _exit(125);
        prepareDisk();
    };
    return std::make_unique<Glimmerly>(desktop_, Glimmerly::Options{.environment = environment,
                                                                    .beforeExec = beforeExec,
                                                                    .program = folder_ / "bin/glimmerly"});
}

std::string Installation::signatureOf(const fs::path& file, Signer signer) const {
    return run("openssl pkeyutl -sign -rawin -inkey " + keyFile(scratch_.path(), signer).string() + " -in " +
               file.string() + " | base64 -w0");
}

std::string Installation::feedOf(const std::string& item) const {
    return R"(<?xml version="1.0"?><rss version="2.0" xmlns:updates="urn:updates"><channel>)" + item +
           "</channel></rss>";
}

std::string Installation::feed(const std::string& behaviour, Signer signer,
                               const std::string& version) const {
    std::string item = item_;
    replace(item, "/file/", "/" + behaviour + "/");
    replace(item, "<updates:version>2.0", "<updates:version>" + version);
    if (signer == Signer::somebodyElse)
        item = std::regex_replace(item, std::regex("edSignature=\"[^\"]*"),
                                  "edSignature=\"" + signatureOf(archive(), signer));
    return feedOf(item);
}

std::string Installation::feedFor(const std::string& content) const {
    const auto file = scratch_.path() / "content";
    writeContent(file, content);
    std::string item = std::regex_replace(item_, std::regex("edSignature=\"[^\"]*"),
                                          "edSignature=\"" + signatureOf(file, Signer::us));
    return feedOf(std::regex_replace(item, std::regex("length=\"[^\"]*"),
                                     "length=\"" + std::to_string(content.size())));
}

void Installation::serve(const std::string& place, const std::string& content) {
    feedPlace_ = place;
    writeContent(server_.files() / fs::path(place).filename(), content);
}

std::string Installation::version() const {
    const auto text = contentOf(folder_ / "share/glimmerly/archive-contents");
    return fs::exists(folder_ / "bin/glimmerly") ? text.substr(0, text.find('\n')) : "none";
}

bool Installation::isAlone() const {
    return namesIn(folder_.parent_path()) == std::vector<std::string>{folder_.filename()};
}

std::vector<pid_t> Installation::programs() const {
    return desktop_.processesOf("bin/glimmerly");
}

void Installation::killPrograms() const {
    // One that was killed may have another started in its place.
    (void)waitUntil([this] {
        const auto running = programs();
        for (const pid_t process : running)
            ::kill(process, SIGKILL);
        return running.empty();
    });
}

std::optional<PixelRect> Installation::openMenu(Pixel icon) const {
    const auto& client = desktop_.client();
    const auto before = client.visibleWindows();
    std::optional<PixelRect> menu;
    robot_.click(icon, 3);
    (void)waitUntil(
        [&] {
            constexpr int leastHeight = 100; // what the panel opens is smaller
            for (const auto window : client.visibleWindows()) {
                const auto area = client.areaOf(window);
                if (std::ranges::find(before, window) == before.end() && area.height > leastHeight)
                    menu = area;
            }
            return menu.has_value();
        },
        std::chrono::seconds(2));
    return menu;
}

testing::AssertionResult Installation::check() const {
    const auto icon = [this] { return trayIconPlace(desktop_.client()); };
    if (!waitUntil([&] { return icon().has_value() && !dialog(); }))
        return testing::AssertionFailure() << "no icon in the panel, or a dialog before it";
    // While the focus wanders from a dialog that has just gone, a menu closes again at once.
    const auto asksForUpdates = [&] {
        const auto menu = openMenu(*icon());
        if (!menu)
            return false;
        // The fourth of five items; the three lines between them are thin.
        constexpr int line = 8;
        const int item = (menu->height - 3 * line) / 5;
        robot_.click({menu->x + menu->width / 2, menu->y + menu->height - line - item * 3 / 2});
        return waitUntil([&] { return dialog().has_value(); }, std::chrono::seconds(3));
    };
    if (waitUntil(asksForUpdates))
        return testing::AssertionSuccess();
    return testing::AssertionFailure() << "no dialog";
}

std::optional<std::string> Installation::dialog() const {
    const auto& client = desktop_.client();
    const auto active = client.windowProperty(client.root(), "_NET_ACTIVE_WINDOW");
    const auto windows = client.managedWindows();
    if (!active || std::ranges::find(windows, *active) == windows.end())
        return std::nullopt;
    return client.propertyBytes(*active, "_NET_WM_NAME");
}

bool Installation::isShown(const std::string& title) const {
    const auto& client = desktop_.client();
    return std::ranges::any_of(client.managedWindows(), [&](xcb_window_t window) {
        return client.propertyBytes(window, "_NET_WM_NAME") == title;
    });
}

testing::AssertionResult Installation::waitFor(const std::string& title) const {
    if (waitUntil([&] { return dialog() == title; }))
        return testing::AssertionSuccess();
    return testing::AssertionFailure() << "in place of “" << title << "”: " << dialog().value_or("nothing");
}

testing::AssertionResult Installation::accept(const std::string& title) const {
    auto shown = waitFor(title);
    if (shown)
        robot_.type({Key::returnKey});
    return shown;
}

} // namespace glimmerly::e2e
