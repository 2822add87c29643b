#include "platform/linux/updates/feed/Appcast.h"

#include "platform/linux/updates/feed/UpdateChoice.h"

#include <gtest/gtest.h>

namespace glimmerly {
namespace {

std::string feedOf(const std::string& items) {
    return R"(<?xml version="1.0" encoding="utf-8"?><rss version="2.0" xmlns:u="urn:updates"><channel>)"
           "<title>Glimmerly</title>" +
           items + "</channel></rss>";
}

std::string item(const std::string& version, const std::string& more = "", const std::string& length = "7") {
    return "<item><u:version> " + version + "\n</u:version>" + more +
           R"(<enclosure url="https://a.example/a.tar.gz" length=")" + length +
           R"(" type="application/gzip" u:edSignature="c2ln"/></item>)";
}

Result<std::vector<AppcastItem>> read(const std::string& feed, std::size_t step = 7) {
    AppcastReader reader;
    for (std::size_t at = 0; at < feed.size(); at += step) {
        if (auto added = reader.add(std::string_view(feed).substr(at, step)); !added)
            return failure(added.error());
    }
    return reader.finish();
}

TEST(Appcast, ReadsWhatItemsSay) {
    const auto items = read(feedOf(
        item("2.0",
             "<title>Two &amp; more</title><link>https://a.example/</link><other><title>no</title></other>"
             "<description u:format=\"plain-text\"><![CDATA[<b>new</b>]]></description><u:channel>beta"
             "</u:channel><u:shortVersionString>2</u:shortVersionString><u:criticalUpdate/>"
             "<u:minimumSystemVersion>2.36</u:minimumSystemVersion><version>9</version>") +
        item("", "<title>without a version</title>") + item("3", "", "-1") + item("3", "", "9x") +
        item(std::string(65, '3')) + item("3\n4") +
        R"(<item><title>without an archive</title><u:version>4</u:version></item>)"));
    ASSERT_TRUE(items) << items.error().description();
    ASSERT_EQ(items->size(), 1u);
    const AppcastItem& only = items->front();
    EXPECT_EQ(only.title, "Two & more");
    EXPECT_EQ(only.link, "https://a.example/");
    EXPECT_EQ(only.notes, "<b>new</b>");
    EXPECT_EQ(only.notesFormat, NotesFormat::plainText);
    EXPECT_EQ(only.channel, "beta");
    EXPECT_EQ(only.version, "2.0");
    EXPECT_EQ(only.displayVersion(), "2");
    EXPECT_EQ(only.minimumSystemVersion, "2.36");
    EXPECT_EQ(only.urgency, Urgency::critical);
    EXPECT_EQ(only.enclosure.url, "https://a.example/a.tar.gz");
    EXPECT_EQ(only.enclosure.length, 7u);
    EXPECT_EQ(only.enclosure.signature, "c2ln");
}

TEST(Appcast, RefusesWhatIsNoFeed) {
    std::string many;
    for (std::size_t i = 0; i <= appcast_limits::items; ++i)
        many += item("1");
    std::string deep;
    for (int i = 0; i < 40; ++i)
        deep += "<a>";
    const std::pair<const char*, std::string> cases[] = {
        {"nothing", ""},
        {"a page", "<!doctype html><html><body>Not found</body></html>"},
        {"a page of XML", "<html xmlns=\"http://www.w3.org/1999/xhtml\"/>"},
        {"entities in entities",
         R"(<!DOCTYPE r [<!ENTITY a "aaaaaaaaaa"><!ENTITY b "&a;&a;&a;&a;&a;">]>)" + feedOf(item("&b;"))},
        {"a file as entity",
         R"(<!DOCTYPE r [<!ENTITY a SYSTEM "file:///etc/hostname">]>)" + feedOf(item("&a;"))},
        {"an unknown entity", feedOf(item("&a;"))},
        {"half a feed", feedOf(item("1")).substr(0, 150)},
        {"two of them", feedOf("") + feedOf("")},
        {"too many items", feedOf(many)},
        {"too deep", feedOf(deep)},
        {"a text too long", feedOf(item(std::string(appcast_limits::text + 1, '1')))},
        {"too long", feedOf(std::string(appcast_limits::feed, ' '))},
    };
    for (const auto& [name, feed] : cases) {
        EXPECT_FALSE(read(feed)) << name;
        EXPECT_FALSE(read(feed, 1u << 21)) << name << ", all at once";
    }
    EXPECT_TRUE(read(feedOf("")).value().empty());
}

TEST(UpdateChoice, OffersTheNewestThatAppliesOrSaysWhyNot) {
    const struct {
        const char* name;
        std::string items;
        std::string offered; ///< empty: none
        NoUpdateReason reason = NoUpdateReason::unknown;
    } cases[] = {
        {"the newest wherever it stands", item("1.1") + item("1.10", "<title>a</title>") + item("1.9"),
         "1.10"},
        {"only older ones", item("0.9"), "", NoUpdateReason::onNewerThanLatest},
        {"a pre-release of this one", item("1.0-rc1"), "", NoUpdateReason::onNewerThanLatest},
        {"this one", item("1.0.0") + item("0.9"), "", NoUpdateReason::onLatestVersion},
        {"none", "", "", NoUpdateReason::unknown},
        {"those of a channel only", item("2", "<u:channel>beta</u:channel>"), "", NoUpdateReason::unknown},
        {"one for another architecture",
         item("3", "<u:architecture>arm64</u:architecture>") +
             item("1.1", "<u:architecture>x86_64</u:architecture>"),
         "1.1"},
        {"one that fits before a newer that does not",
         item("3", "<u:minimumSystemVersion>9</u:minimumSystemVersion>") + item("1.1"), "1.1"},
        {"one that does not fit",
         item("3", "<u:minimumSystemVersion>2.37</u:minimumSystemVersion>") + item("1.0"), "",
         NoUpdateReason::systemIsTooOld},
        {"a skipped one", item("1.5"), "", NoUpdateReason::skipped},
        {"a skipped one that is critical", item("1.5", "<u:criticalUpdate/>"), "1.5"},
        {"a newer one than the skipped", item("1.5") + item("1.6"), "1.6"},
    };
    for (const auto& [name, items, offered, reason] : cases) {
        const auto choice = chooseUpdate(read(feedOf(items)).value(), {.currentVersion = "1.0",
                                                                       .systemVersion = "2.36",
                                                                       .architecture = "x86_64",
                                                                       .skippedVersion = "1.5"});
        EXPECT_EQ(choice.item ? choice.item->version : "", offered) << name;
        EXPECT_EQ(choice.item ? NoUpdateReason::unknown : choice.reason, reason) << name;
    }
}

} // namespace
} // namespace glimmerly
