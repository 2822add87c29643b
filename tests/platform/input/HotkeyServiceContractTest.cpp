#include "TestKeyboard.h"
#include "platform/x11/X11HotkeyService.h"
#include "tests/support/FakeHotkeyService.h"

#include <QTest>
#include <gmock/gmock.h>

namespace glimmerly {
namespace {

using testing::ElementsAre;

/// A hotkey service with a keyboard.
class ServiceUnderTest {
public:
    virtual ~ServiceUnderTest() = default;
    virtual HotkeyService& service() = 0;
    /// Presses and releases `keyCode` while the keys of `carbonFlags` are held.
    virtual void press(std::int64_t keyCode, std::uint32_t carbonFlags) = 0;
};

class FakeUnderTest : public ServiceUnderTest {
public:
    HotkeyService& service() override { return service_; }
    void press(std::int64_t keyCode, std::uint32_t carbonFlags) override {
        service_.press(static_cast<std::uint32_t>(keyCode), carbonFlags);
    }

private:
    FakeHotkeyService service_;
};

class X11UnderTest : public ServiceUnderTest {
public:
    HotkeyService& service() override { return *service_; }
    void press(std::int64_t keyCode, std::uint32_t carbonFlags) override {
        const std::pair<std::uint32_t, std::int64_t> modifierKeys[] = {
            {hotkey_modifier::control, TestKeyboard::controlKey},
            {hotkey_modifier::option, TestKeyboard::altKey},
            {hotkey_modifier::shift, TestKeyboard::shiftKey},
            {hotkey_modifier::command, TestKeyboard::superKey}};
        std::vector<std::int64_t> modifiers;
        for (const auto& [flag, key] : modifierKeys) {
            if (carbonFlags & flag)
                modifiers.push_back(key);
        }
        keyboard_.tap(modifiers, keyCode);
    }

private:
    TestKeyboard keyboard_;
    std::unique_ptr<X11HotkeyService> service_ = X11HotkeyService::open().value();
};

using Maker = std::unique_ptr<ServiceUnderTest> (*)();

class HotkeyServiceContract : public testing::TestWithParam<std::pair<const char*, Maker>> {
protected:
    HotkeyServiceContract() {
        handler = service.installHandler(handlerNoting(heard, hotkey_status::success)).ref;
        EXPECT_NE(registered(96, hotkey_modifier::control, last), 0U);
    }

    static HotkeyService::Handler handlerNoting(std::vector<HotkeyIdentifier>& list, HotkeyStatus answer) {
        return [&list, answer](const HotkeyEvent* event) {
            EXPECT_EQ(event->kind(), hotkeyPressedEventKind);
            list.push_back(event->identifier().value());
            return answer;
        };
    }
    HotkeyService::HotkeyRef registered(std::uint32_t keyCode, std::uint32_t flags, HotkeyIdentifier id) {
        const auto answer = service.registerHotkey(keyCode, flags, id);
        EXPECT_EQ(answer.status, hotkey_status::success);
        return answer.ref;
    }
    /// What was heard so far, once nothing that was pressed before can still arrive.
    std::vector<HotkeyIdentifier> everythingHeard(std::vector<HotkeyIdentifier>& list) {
        underTest->press(96, hotkey_modifier::control);
        EXPECT_TRUE(QTest::qWaitFor([&] { return !list.empty() && list.back() == last; }, 10'000));
        auto all = std::exchange(list, {});
        if (!all.empty())
            all.pop_back();
        return all;
    }

    static constexpr HotkeyIdentifier one{0x474C4D52, 1};
    static constexpr HotkeyIdentifier two{0x474C4D52, 2};
    static constexpr HotkeyIdentifier last{0x474C4D52, 99};
    static constexpr std::uint32_t shiftCommand = hotkey_modifier::shift | hotkey_modifier::command;

    std::unique_ptr<ServiceUnderTest> underTest = GetParam().second();
    HotkeyService& service = underTest->service();
    HotkeyService::HandlerRef handler = 0;
    std::vector<HotkeyIdentifier> heard;
};

TEST_P(HotkeyServiceContract, DeliversEachPressOfExactlyItsCombination) {
    registered(0, shiftCommand, one);
    registered(0, hotkey_modifier::control | hotkey_modifier::option, two);
    underTest->press(0, shiftCommand);
    underTest->press(0, hotkey_modifier::command);
    underTest->press(0, shiftCommand | hotkey_modifier::control);
    underTest->press(1, shiftCommand);
    underTest->press(0, hotkey_modifier::control | hotkey_modifier::option);
    underTest->press(0, shiftCommand);
    EXPECT_THAT(everythingHeard(heard), ElementsAre(one, two, one));
}

TEST_P(HotkeyServiceContract, UnregisteringStopsDelivery) {
    const auto ref = registered(0, shiftCommand, one);
    EXPECT_EQ(service.unregisterHotkey(ref), hotkey_status::success);
    EXPECT_EQ(service.unregisterHotkey(ref), hotkey_status::hotkeyInvalid);
    underTest->press(0, shiftCommand);
    EXPECT_THAT(everythingHeard(heard), ElementsAre());
    registered(0, shiftCommand, two);
    underTest->press(0, shiftCommand);
    EXPECT_THAT(everythingHeard(heard), ElementsAre(two));
}

TEST_P(HotkeyServiceContract, RefusesWhatIsTakenOrNoKey) {
    registered(0, shiftCommand, one);
    const auto again = service.registerHotkey(0, shiftCommand, two);
    EXPECT_EQ(again.status, hotkey_status::hotkeyExists);
    EXPECT_EQ(again.ref, 0U);
    for (const std::uint32_t noKey : {52U, 70'000U, 0xFFFFFFFFU})
        EXPECT_EQ(service.registerHotkey(noKey, shiftCommand, two).status, hotkey_status::hotkeyInvalid);
    underTest->press(0, shiftCommand);
    EXPECT_THAT(everythingHeard(heard), ElementsAre(one));
}

TEST_P(HotkeyServiceContract, HandlersAreAskedInTurnUntilOneTakesTheEvent) {
    registered(0, shiftCommand, one);
    std::vector<HotkeyIdentifier> passed;
    std::vector<HotkeyIdentifier> taken;
    std::ignore = service.installHandler(handlerNoting(passed, hotkey_status::eventNotHandled));
    std::ignore = service.installHandler(handlerNoting(taken, hotkey_status::success));
    underTest->press(0, shiftCommand);
    EXPECT_THAT(everythingHeard(heard), ElementsAre(one));
    EXPECT_EQ(service.removeHandler(handler), hotkey_status::success);
    EXPECT_NE(service.removeHandler(handler), hotkey_status::success);
    underTest->press(0, shiftCommand);
    EXPECT_THAT(everythingHeard(taken), ElementsAre(one));
    EXPECT_THAT(passed, ElementsAre(one, last));
    EXPECT_THAT(heard, ElementsAre());
}

INSTANTIATE_TEST_SUITE_P(
    , HotkeyServiceContract,
    testing::Values(
        std::pair<const char*, Maker>{
            "Fake", [] -> std::unique_ptr<ServiceUnderTest> { return std::make_unique<FakeUnderTest>(); }},
        std::pair<const char*, Maker>{
            "X11", [] -> std::unique_ptr<ServiceUnderTest> { return std::make_unique<X11UnderTest>(); }}),
    [](const auto& parameter) { return std::string(parameter.param.first); });

} // namespace
} // namespace glimmerly
