// The names of Windows for handles, registry access and message boxes; on other systems the same names with
// the same values. The only header outside platform/'s sources that includes a system header.
#ifndef VELMORA_PLATFORM_TYPES_H_
#define VELMORA_PLATFORM_TYPES_H_

#if defined(_WIN32)

#ifndef NOMINMAX
#define NOMINMAX
#endif
#ifndef WIN32_LEAN_AND_MEAN
#define WIN32_LEAN_AND_MEAN
#endif
#include <windows.h>

#else

#include <cstdint>

namespace velmora {

// A registry key; a module; a window. @{
using HKEY = struct HKEY__*;
using HINSTANCE = struct HINSTANCE__*;
using HWND = struct HWND__*;
// @}

// The roots of the registry (registry_store.h). @{
inline const HKEY HKEY_CLASSES_ROOT = reinterpret_cast<HKEY>(std::uintptr_t{0x80000000U});
inline const HKEY HKEY_CURRENT_USER = reinterpret_cast<HKEY>(std::uintptr_t{0x80000001U});
inline const HKEY HKEY_LOCAL_MACHINE = reinterpret_cast<HKEY>(std::uintptr_t{0x80000002U});
inline const HKEY HKEY_USERS = reinterpret_cast<HKEY>(std::uintptr_t{0x80000003U});
inline const HKEY HKEY_CURRENT_CONFIG = reinterpret_cast<HKEY>(std::uintptr_t{0x80000005U});
// @}

// What a key is opened for. KEY_READ, KEY_WRITE and KEY_ALL_ACCESS are sums of rights; KEY_WOW64_64KEY and
// KEY_WOW64_32KEY choose the view and are added to one of the others. @{
inline constexpr int KEY_QUERY_VALUE = 0x0001;
inline constexpr int KEY_SET_VALUE = 0x0002;
inline constexpr int KEY_WRITE = 0x20006;
inline constexpr int KEY_READ = 0x20019;
inline constexpr int KEY_ALL_ACCESS = 0xF003F;
inline constexpr int KEY_WOW64_64KEY = 0x0100;
inline constexpr int KEY_WOW64_32KEY = 0x0200;
// @}

// The types of a value: text, text with environment variables, bytes, a 32-bit number. @{
inline constexpr unsigned REG_SZ = 1;
inline constexpr unsigned REG_EXPAND_SZ = 2;
inline constexpr unsigned REG_BINARY = 3;
inline constexpr unsigned REG_DWORD = 4;
// @}

// The style of a message box, a sum: its buttons, its icon, the second button as default, in the
// foreground. @{
inline constexpr unsigned MB_OK = 0x0000;
inline constexpr unsigned MB_YESNO = 0x0004;
inline constexpr unsigned MB_ICONEXCLAMATION = 0x0030;
inline constexpr unsigned MB_DEFBUTTON2 = 0x0100;
inline constexpr unsigned MB_SETFOREGROUND = 0x10000;
// @}

// The button pressed in a message box. @{
inline constexpr int IDOK = 1;
inline constexpr int IDYES = 6;
inline constexpr int IDNO = 7;
// @}

// The first message number that is a program's own; NotifyWindow gets it.
inline constexpr unsigned WM_USER = 0x0400;

// A font's description, the same 92 bytes on every system.
struct LOGFONTW {
  std::int32_t lfHeight;  // logical units; below 0 that of the characters, above 0 that of the line, 0 usual
  std::int32_t lfWidth;   // average; 0: from the height
  std::int32_t lfEscapement;   // of the line, in tenths of a degree, counter-clockwise
  std::int32_t lfOrientation;  // of each character, likewise
  std::int32_t lfWeight;       // 0 to 1000: 400 normal, 700 bold
  std::uint8_t lfItalic;       // not 0: italic
  std::uint8_t lfUnderline;    // not 0: underlined
  std::uint8_t lfStrikeOut;    // not 0: struck out
  // The character set, how closely size, clipping and quality are to match, pitch and family: numbers of
  // Windows, which are only stored elsewhere. @{
  std::uint8_t lfCharSet;
  std::uint8_t lfOutPrecision;
  std::uint8_t lfClipPrecision;
  std::uint8_t lfQuality;
  std::uint8_t lfPitchAndFamily;
  // @}
  char16_t lfFaceName[32];  // UTF-16 with a terminating zero
};

}  // namespace velmora

#endif

#endif  // VELMORA_PLATFORM_TYPES_H_
