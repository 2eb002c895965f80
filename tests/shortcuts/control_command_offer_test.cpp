// When users are offered ⌃⌘ in place of ⌃⌥, and what becomes of the offer.
#include "shortcuts/control_command_offer.h"

#include "shortcuts/recorder_fixture.h"

namespace tessellon {
namespace {

constexpr std::uint32_t controlCommandKeys = 0x1100;

class ControlCommandOfferTest : public RecorderFixture {
  protected:
    /// Another program takes ⌃⌥← or ⌃⌘←, which is noticed at the next registration.
    void holdLeftArrow(std::uint32_t modifiers) {
        center.holdByOthers(123, modifiers);
        hotkeys.registerHotkeys();
    }

    ControlCommandOffer offer{bindings, hotkeys, notifications};
    int changes = 0;
    Token changed = offer.changed().subscribe([this] { ++changes; });
};

TEST_F(ControlCommandOfferTest, IsMadeWhileAShortcutIsTakenAndItWouldChangeSome) {
    EXPECT_FALSE(offer.isDue());
    holdLeftArrow(controlOptionKeys);
    EXPECT_TRUE(offer.isDue());
    EXPECT_TRUE(ControlCommandOffer(bindings, hotkeys, notifications).isDue());
    EXPECT_EQ(changes, 1);

    offer.accept();
    EXPECT_FALSE(offer.isDue());
    EXPECT_EQ(changes, 2);
    EXPECT_TRUE(hotkeys.takenTargets().empty());
    EXPECT_TRUE(center.registeredId(123, controlCommandKeys));
    EXPECT_TRUE(center.registeredId(36, 0x1300)) << "almost maximize, with shift";
    EXPECT_TRUE(center.registeredId(123, 0x1900)) << "the previous display, as before";

    holdLeftArrow(controlCommandKeys);
    EXPECT_FALSE(hotkeys.takenTargets().empty());
    EXPECT_FALSE(offer.isDue()) << "it would change nothing";

    bindings.resetToDefaults();
    EXPECT_TRUE(offer.isDue());
    center.releaseByOthers(123, controlOptionKeys);
    hotkeys.registerHotkeys();
    EXPECT_FALSE(offer.isDue());
    EXPECT_EQ(changes, 4);
}

TEST_F(ControlCommandOfferTest, StaysAsItIsWhileAShortcutIsRecordedWhichAcceptingEnds) {
    holdLeftArrow(controlOptionKeys);
    recorder->toggle(right);
    EXPECT_TRUE(offer.isDue());
    EXPECT_EQ(changes, 1);
    offer.accept();
    EXPECT_TRUE(isIdle());
    EXPECT_EQ(shortcut(SnapAction::leftHalf), "⌃⌘←");
    EXPECT_FALSE(offer.isDue());
}

}  // namespace
}  // namespace tessellon
