#include "platform/linux/updates/feed/Appcast.h"

#include "base/Whitespace.h"

#include <expat.h>

#include <algorithm>
#include <charconv>
#include <memory>
#include <type_traits>

namespace glimmerly {

namespace {

/// Between a namespace and a name in what expat reports; no namespace can contain it.
constexpr char separator = '\n';
constexpr auto errorDomain = "GlimmerlyAppcastError";

enum Code { malformed, notAFeed, documentType, tooLarge };

struct Name {
    std::string_view local;
    bool isExtension = false; ///< it has a namespace
};

Name nameOf(const char* reported) {
    const std::string_view text = reported;
    const auto end = text.rfind(separator);
    return end == std::string_view::npos ? Name{text, false} : Name{text.substr(end + 1), true};
}

template <typename Handler>
void eachAttribute(const char** attributes, Handler handler) {
    for (; *attributes != nullptr; attributes += 2)
        handler(nameOf(attributes[0]), std::string_view(attributes[1]));
}

std::uint64_t lengthFrom(std::string_view text) {
    std::uint64_t length = 0;
    const char* end = std::to_address(text.end());
    const auto [rest, failed] = std::from_chars(std::to_address(text.begin()), end, length);
    return failed == std::errc() && rest == end ? length : 0;
}

/// As windows and the log can show it.
bool isVersion(std::string_view text) {
    constexpr std::size_t longest = 64;
    return text.size() <= longest && std::ranges::all_of(text, [](char c) { return c >= ' ' && c <= '~'; });
}

bool isComplete(const AppcastItem& item) {
    return !item.version.empty() && isVersion(item.version) && isVersion(item.shortVersion) &&
           !item.enclosure.url.empty() && item.enclosure.length > 0;
}

} // namespace

class AppcastReader::Parser {
public:
    Parser();
    Result<void> add(std::string_view bytes, int isFinal);
    std::vector<AppcastItem> takeItems() { return std::move(items_); }

private:
    struct Free {
        void operator()(XML_Parser parser) const { XML_ParserFree(parser); }
    };

    void open(const char* element, const char** attributes);
    void openInItem(const Name& name, const char** attributes);
    void close();
    void addText(std::string_view text);
    void closeItem();
    /// The field of the item at hand that the element's text belongs to; none: nowhere.
    std::string* fieldFor(const Name& name);
    void readEnclosure(const char** attributes);
    void stop(Code code, const char* what);

    std::unique_ptr<std::remove_pointer_t<XML_Parser>, Free> expat_{XML_ParserCreateNS(nullptr, separator)};
    std::optional<Error> error_;
    std::size_t bytes_ = 0;
    int depth_ = 0;
    int itemDepth_ = 0; ///< 0: outside of every item
    std::size_t itemsSeen_ = 0;
    AppcastItem item_;
    std::string* field_ = nullptr;
    std::vector<AppcastItem> items_;
};

AppcastReader::Parser::Parser() {
    if (!expat_) {
        stop(malformed, "The feed could not be read.");
        return;
    }
    XML_Parser expat = expat_.get();
    XML_SetUserData(expat, this);
    XML_SetElementHandler(
        expat,
        [](void* data, const char* name, const char** attributes) {
            static_cast<Parser*>(data)->open(name, attributes);
        },
        [](void* data, const char*) { static_cast<Parser*>(data)->close(); });
    XML_SetCharacterDataHandler(expat, [](void* data, const char* text, int length) {
        static_cast<Parser*>(data)->addText({text, static_cast<std::size_t>(length)});
    });
    XML_SetStartDoctypeDeclHandler(expat, [](void* data, const char*, const char*, const char*, int) {
        static_cast<Parser*>(data)->stop(documentType, "The feed contains a document type.");
    });
}

void AppcastReader::Parser::stop(Code code, const char* what) {
    if (error_)
        return;
    error_ = Error(errorDomain, code, what);
    if (expat_)
        XML_StopParser(expat_.get(), XML_FALSE);
}

Result<void> AppcastReader::Parser::add(std::string_view bytes, int isFinal) {
    bytes_ += bytes.size();
    if (bytes_ > appcast_limits::feed)
        stop(tooLarge, "The feed is too large.");
    if (error_)
        return failure(*error_);
    const auto status = XML_Parse(expat_.get(), bytes.data(), static_cast<int>(bytes.size()), isFinal);
    if (status != XML_STATUS_OK && !error_) {
        error_ = Error(errorDomain, malformed, "The feed is no well-formed XML.")
                     .withFailureReason(std::string(XML_ErrorString(XML_GetErrorCode(expat_.get()))) +
                                        " in line " + std::to_string(XML_GetCurrentLineNumber(expat_.get())));
    }
    if (error_)
        return failure(*error_);
    return {};
}

void AppcastReader::Parser::open(const char* element, const char** attributes) {
    field_ = nullptr;
    const Name name = nameOf(element);
    if (++depth_ > appcast_limits::depth)
        return stop(tooLarge, "The feed is nested too deeply.");
    if (depth_ == 1 && (name.isExtension || name.local != "rss"))
        return stop(notAFeed, "What the address answers with is no feed.");
    if (itemDepth_ > 0) {
        if (depth_ == itemDepth_ + 1)
            openInItem(name, attributes);
        return;
    }
    if (!name.isExtension && name.local == "item") {
        if (++itemsSeen_ > appcast_limits::items)
            return stop(tooLarge, "The feed has too many items.");
        itemDepth_ = depth_;
        item_ = {};
    }
}

void AppcastReader::Parser::openInItem(const Name& name, const char** attributes) {
    if (!name.isExtension && name.local == "enclosure")
        return readEnclosure(attributes);
    if (name.isExtension && name.local == "criticalUpdate")
        item_.urgency = Urgency::critical;
    field_ = fieldFor(name);
    if (field_ == nullptr)
        return;
    field_->clear();
    if (field_ == &item_.notes) {
        eachAttribute(attributes, [this](const Name& attribute, std::string_view value) {
            if (attribute.local == "format" && value == "plain-text")
                item_.notesFormat = NotesFormat::plainText;
        });
    }
}

std::string* AppcastReader::Parser::fieldFor(const Name& name) {
    const struct {
        std::string_view name;
        bool isExtension;
        std::string* field;
    } fields[] = {
        {"title", false, &item_.title},
        {"link", false, &item_.link},
        {"description", false, &item_.notes},
        {"version", true, &item_.version},
        {"shortVersionString", true, &item_.shortVersion},
        {"minimumSystemVersion", true, &item_.minimumSystemVersion},
        {"architecture", true, &item_.architecture},
        {"channel", true, &item_.channel},
    };
    for (const auto& field : fields) {
        if (field.name == name.local && field.isExtension == name.isExtension)
            return field.field;
    }
    return nullptr;
}

void AppcastReader::Parser::readEnclosure(const char** attributes) {
    item_.enclosure = {};
    eachAttribute(attributes, [this](const Name& name, std::string_view value) {
        if (value.size() > appcast_limits::text)
            return stop(tooLarge, "A text of the feed is too long.");
        if (name.isExtension && name.local == "edSignature")
            item_.enclosure.signature = value;
        else if (name.isExtension && name.local == "version" && item_.version.empty())
            item_.version = value;
        else if (name.isExtension && name.local == "shortVersionString" && item_.shortVersion.empty())
            item_.shortVersion = value;
        else if (!name.isExtension && name.local == "url")
            item_.enclosure.url = value;
        else if (!name.isExtension && name.local == "length")
            item_.enclosure.length = lengthFrom(value);
        else if (!name.isExtension && name.local == "type")
            item_.enclosure.type = value;
    });
}

void AppcastReader::Parser::addText(std::string_view text) {
    if (field_ == nullptr)
        return;
    if (field_->size() + text.size() > appcast_limits::text)
        return stop(tooLarge, "A text of the feed is too long.");
    field_->append(text);
}

void AppcastReader::Parser::close() {
    if (depth_ == itemDepth_)
        closeItem();
    field_ = nullptr;
    --depth_;
}

void AppcastReader::Parser::closeItem() {
    itemDepth_ = 0;
    for (std::string* text : {&item_.title, &item_.version, &item_.shortVersion, &item_.minimumSystemVersion,
                              &item_.architecture, &item_.channel, &item_.notes, &item_.link})
        *text = std::string(trimmedWhitespace(*text));
    if (isComplete(item_))
        items_.push_back(std::move(item_));
}

AppcastReader::AppcastReader() : parser_(std::make_unique<Parser>()) {}

AppcastReader::~AppcastReader() = default;

Result<void> AppcastReader::add(std::string_view bytes) {
    return parser_->add(bytes, XML_FALSE);
}

Result<std::vector<AppcastItem>> AppcastReader::finish() {
    if (auto ended = parser_->add({}, XML_TRUE); !ended)
        return failure(ended.error());
    return parser_->takeItems();
}

} // namespace glimmerly
