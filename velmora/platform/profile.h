// Private profiles: small settings files.
//
//   ; a comment                 a line that begins with a semicolon, kept as it is
//   [Section]                   blanks within the brackets and after them mean nothing
//   key = value                 the first "=" splits; blanks around both mean nothing
//   key = "  value "            matching quotes, single or double, keep a value's blanks and are not read
//
// Sections and keys compare without regard to letter case; of equal ones the first answers, and a
// section ends where the next begins. A line without "=" is a key whose value is empty. Lines end in
// CR LF, LF or CR. The text is Windows-1252, or what the file's UTF-8 or UTF-16 mark says.
//
// A file name without a folder is a file of the Windows folder; elsewhere of the folder velmora in the
// user's data folder ($XDG_DATA_HOME, else ~/.local/share). There is no section and no key of empty name.
#ifndef VELMORA_PLATFORM_PROFILE_H_
#define VELMORA_PLATFORM_PROFILE_H_

#include "velmora/export.h"
#include "velmora/text/string.h"

namespace velmora {

// The value, cut to 254 characters; empty when there is none, or no such file.
VELMORA_API CString ReadProfile(const CString& section, const CString& key, const CString& file);

// Stores the value as it is given; a null value deletes the key. The line of the key is replaced where
// it stands, a new key goes to the end of its section, before the blank lines there, and a new section
// to the end of the file. Nothing else in the file changes. A missing file is made, a missing folder
// is not.
//
// False, the file as it was, when it cannot be written (a folder, write-protected) or cannot hold the
// text: a character that its encoding lacks, a line break, a "=" in the key, a "]" in the section.
VELMORA_API bool WriteProfile(const CString& section, const CString& key, const wchar_t* value,
                              const CString& file);

}  // namespace velmora

#endif  // VELMORA_PLATFORM_PROFILE_H_
