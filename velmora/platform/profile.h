// Private profiles: small settings files.
//
//   ; a comment                 a line that begins with a semicolon, kept unchanged
//   [Section]                   blanks inside and after the brackets are ignored
//   key = value                 the first "=" splits; blanks around key and value are ignored
//   key = "  value "            matching quotes, single or double, preserve blanks and are removed
//
// Sections and keys compare without regard to letter case; of equal ones the first counts, and a section ends
// where the next begins. A line without "=" is a key with an empty value. Lines end in CR LF, LF or CR. The
// encoding is Windows-1252, or that of the file's UTF-8 or UTF-16 byte-order mark.
//
// A file name without a folder is a file of the Windows folder; on other systems of the folder velmora in the
// user's data folder ($XDG_DATA_HOME, else ~/.local/share). Names of sections and keys are not empty.
#ifndef VELMORA_PLATFORM_PROFILE_H_
#define VELMORA_PLATFORM_PROFILE_H_

#include <span>
#include <vector>

#include "velmora/export.h"
#include "velmora/text/string.h"

namespace velmora {

// The value, cut to 254 characters; empty when there is none, or no such file.
VELMORA_API CString ReadProfile(const CString& section, const CString& key, const CString& file);

// The values of several keys of a section, in their order, where the system allows from one reading of the
// file.
std::vector<CString> ReadProfileKeys(const CString& section, std::span<const CString> keys,
                                     const CString& file);

// Stores the value unchanged; a null value deletes the key. An existing key's line is replaced, a new key is
// added at the end of its section before blank lines there, and a new section at the end of the file. Added
// lines end as the others, in CR LF in a new file. Nothing else in the file changes. A missing file is
// created, a missing folder is not.
//
// False, with the file unchanged, when it cannot be written (a folder, write-protected) or cannot hold the
// text: a character outside its encoding, a line break, a "=" in the key, a "]" in the section.
VELMORA_API bool WriteProfile(const CString& section, const CString& key, const wchar_t* value,
                              const CString& file);

}  // namespace velmora

#endif  // VELMORA_PLATFORM_PROFILE_H_
