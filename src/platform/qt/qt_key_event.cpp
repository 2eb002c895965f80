#include "platform/qt/qt_key_event.h"

#include "base/modifier_flag.h"

#include <QChar>
#include <QString>
#include <algorithm>
#include <array>
#include <cstdint>

namespace tessellon {
namespace {

struct SymbolRow {
    std::uint32_t symbol;
    Qt::Key key;
};

// The symbols that type nothing, by the numbers of X11's keysymdef.h.
constexpr std::array<SymbolRow, 48> symbolTable{{
    {0xFE03, Qt::Key_AltGr},    {0xFE20, Qt::Key_Backtab},  {0xFF08, Qt::Key_Backspace},
    {0xFF09, Qt::Key_Tab},      {0xFF0D, Qt::Key_Return},   {0xFF1B, Qt::Key_Escape},
    {0xFF50, Qt::Key_Home},     {0xFF51, Qt::Key_Left},     {0xFF52, Qt::Key_Up},
    {0xFF53, Qt::Key_Right},    {0xFF54, Qt::Key_Down},     {0xFF55, Qt::Key_PageUp},
    {0xFF56, Qt::Key_PageDown}, {0xFF57, Qt::Key_End},      {0xFF63, Qt::Key_Insert},
    {0xFF65, Qt::Key_Undo},     {0xFF66, Qt::Key_Redo},     {0xFF67, Qt::Key_Menu},
    {0xFF7F, Qt::Key_NumLock},  {0xFF8D, Qt::Key_Enter},    {0xFF95, Qt::Key_Home},
    {0xFF96, Qt::Key_Left},     {0xFF97, Qt::Key_Up},       {0xFF98, Qt::Key_Right},
    {0xFF99, Qt::Key_Down},     {0xFF9A, Qt::Key_PageUp},   {0xFF9B, Qt::Key_PageDown},
    {0xFF9C, Qt::Key_End},      {0xFF9D, Qt::Key_Clear},    {0xFF9E, Qt::Key_Insert},
    {0xFF9F, Qt::Key_Delete},   {0xFFAA, Qt::Key_Asterisk}, {0xFFAB, Qt::Key_Plus},
    {0xFFAC, Qt::Key_Comma},    {0xFFAD, Qt::Key_Minus},    {0xFFAE, Qt::Key_Period},
    {0xFFAF, Qt::Key_Slash},    {0xFFE1, Qt::Key_Shift},    {0xFFE2, Qt::Key_Shift},
    {0xFFE3, Qt::Key_Control},  {0xFFE4, Qt::Key_Control},  {0xFFE5, Qt::Key_CapsLock},
    {0xFFE9, Qt::Key_Alt},      {0xFFEA, Qt::Key_Alt},      {0xFFEB, Qt::Key_Super_L},
    {0xFFEC, Qt::Key_Super_R},  {0xFFFF, Qt::Key_Delete},   {0x1008FF6D, Qt::Key_Paste},
}};
static_assert(std::ranges::is_sorted(symbolTable, {}, &SymbolRow::symbol));

struct PlaceRow {
    std::uint32_t keyCode;
    Qt::Key key;
};

// The keys of undo, cut, copy, paste and select all on an ANSI keyboard, by virtual key code.
constexpr std::array<PlaceRow, 5> editingPlaces{
    {{0, Qt::Key_A}, {6, Qt::Key_Z}, {7, Qt::Key_X}, {8, Qt::Key_C}, {9, Qt::Key_V}}};

constexpr std::uint32_t lastLatin = 0xFF;

/// Qt numbers a key that types a character by that character in upper case.
int keyTyping(char32_t character) {
    return static_cast<int>(QChar::toUpper(character));
}

int keyBySymbol(std::uint32_t symbol) {
    constexpr std::uint32_t unicodeSymbols = 0x1000000;
    constexpr std::uint32_t keypadZero = 0xFFB0;
    constexpr std::uint32_t keypadNine = 0xFFB9;
    constexpr std::uint32_t f1 = 0xFFBE;
    constexpr std::uint32_t f35 = 0xFFE0;
    const bool isLatin1 =
        (symbol >= 0x20 && symbol < 0x7F) || (symbol >= 0xA0 && symbol <= lastLatin);
    if (isLatin1) {
        return keyTyping(symbol);
    }
    if (symbol > unicodeSymbols && symbol <= unicodeSymbols + QChar::LastValidCodePoint) {
        return keyTyping(symbol - unicodeSymbols);
    }
    if (symbol >= keypadZero && symbol <= keypadNine) {
        return Qt::Key_0 + static_cast<int>(symbol - keypadZero);
    }
    if (symbol >= f1 && symbol <= f35) {
        return Qt::Key_F1 + static_cast<int>(symbol - f1);
    }
    const auto* const row = std::ranges::lower_bound(symbolTable, symbol, {}, &SymbolRow::symbol);
    return row != symbolTable.end() && row->symbol == symbol ? row->key : Qt::Key_unknown;
}

int keyFor(const TypedKey& key) {
    int result = keyBySymbol(key.symbol);
    if (result == Qt::Key_unknown) {
        const auto typed = QString::fromStdString(key.event.charactersIgnoringModifiers).toUcs4();
        if (typed.size() == 1) {
            result = keyTyping(typed.front());
        }
    }
    const bool isForeign = result == Qt::Key_unknown ||
                           (result > static_cast<int>(lastLatin) && result < Qt::Key_Escape);
    if ((key.event.modifiers & modifier_flag::control) != 0 && isForeign) {
        const auto* const row =
            std::ranges::find(editingPlaces, key.event.keyCode, &PlaceRow::keyCode);
        if (row != editingPlaces.end()) {
            return row->key;
        }
    }
    return result;
}

bool isOnKeypad(std::uint32_t symbol) {
    return symbol >= 0xFF8D && symbol <= 0xFFB9;
}

Qt::KeyboardModifiers qtModifiers(const TypedKey& key) {
    const auto flags = key.event.modifiers;
    Qt::KeyboardModifiers result;
    result.setFlag(Qt::ShiftModifier, (flags & modifier_flag::shift) != 0);
    result.setFlag(Qt::ControlModifier, (flags & modifier_flag::control) != 0);
    result.setFlag(Qt::AltModifier, (flags & modifier_flag::option) != 0);
    result.setFlag(Qt::MetaModifier, (flags & modifier_flag::command) != 0);
    result.setFlag(Qt::KeypadModifier, isOnKeypad(key.symbol));
    return result;
}

}  // namespace

QKeyEvent toQtKeyEvent(const TypedKey& key) {
    constexpr auto silent = modifier_flag::command | modifier_flag::control;
    const bool types = (key.event.modifiers & silent) == 0;
    return {key.transition == KeyTransition::pressed ? QEvent::KeyPress : QEvent::KeyRelease,
            keyFor(key), qtModifiers(key),
            types ? QString::fromStdString(key.event.characters) : QString(), key.event.isRepeat};
}

}  // namespace tessellon
