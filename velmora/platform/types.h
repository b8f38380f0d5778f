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

using HKEY = struct HKEY__*;
using HINSTANCE = struct HINSTANCE__*;
using HWND = struct HWND__*;

inline const HKEY HKEY_CLASSES_ROOT = reinterpret_cast<HKEY>(std::uintptr_t{0x80000000U});
inline const HKEY HKEY_CURRENT_USER = reinterpret_cast<HKEY>(std::uintptr_t{0x80000001U});
inline const HKEY HKEY_LOCAL_MACHINE = reinterpret_cast<HKEY>(std::uintptr_t{0x80000002U});
inline const HKEY HKEY_USERS = reinterpret_cast<HKEY>(std::uintptr_t{0x80000003U});
inline const HKEY HKEY_CURRENT_CONFIG = reinterpret_cast<HKEY>(std::uintptr_t{0x80000005U});

inline constexpr int KEY_QUERY_VALUE = 0x0001;
inline constexpr int KEY_SET_VALUE = 0x0002;
inline constexpr int KEY_WRITE = 0x20006;
inline constexpr int KEY_READ = 0x20019;
inline constexpr int KEY_ALL_ACCESS = 0xF003F;
inline constexpr int KEY_WOW64_64KEY = 0x0100;
inline constexpr int KEY_WOW64_32KEY = 0x0200;

inline constexpr unsigned REG_SZ = 1;
inline constexpr unsigned REG_EXPAND_SZ = 2;
inline constexpr unsigned REG_BINARY = 3;
inline constexpr unsigned REG_DWORD = 4;

inline constexpr unsigned MB_OK = 0x0000;
inline constexpr unsigned MB_YESNO = 0x0004;
inline constexpr unsigned MB_ICONEXCLAMATION = 0x0030;
inline constexpr unsigned MB_DEFBUTTON2 = 0x0100;
inline constexpr unsigned MB_SETFOREGROUND = 0x10000;

inline constexpr int IDOK = 1;
inline constexpr int IDYES = 6;
inline constexpr int IDNO = 7;

inline constexpr unsigned WM_USER = 0x0400;

// A font's description, the same 92 bytes on every system; the face name is UTF-16.
struct LOGFONTW {
  std::int32_t lfHeight;
  std::int32_t lfWidth;
  std::int32_t lfEscapement;
  std::int32_t lfOrientation;
  std::int32_t lfWeight;
  std::uint8_t lfItalic;
  std::uint8_t lfUnderline;
  std::uint8_t lfStrikeOut;
  std::uint8_t lfCharSet;
  std::uint8_t lfOutPrecision;
  std::uint8_t lfClipPrecision;
  std::uint8_t lfQuality;
  std::uint8_t lfPitchAndFamily;
  char16_t lfFaceName[32];
};

}  // namespace velmora

#endif

#endif  // VELMORA_PLATFORM_TYPES_H_
