// The lines of a settings or code file, as the library reads them.
#ifndef VELMORA_CLI_CONTEXT_SETTINGS_LINES_H_
#define VELMORA_CLI_CONTEXT_SETTINGS_LINES_H_

#include <string>

#include "velmora/settings/settings_text.h"
#include "velmora/text/string.h"

namespace velmora::cli {

// The whole file; throws a Refusal that names it when it cannot be read.
TextLines TextLinesOf(const CString& path);

// The findings of lines that reading skips, cuts or misreads.
Findings MisreadLines(SettingsFileKind kind, const TextLines& lines);

// A note that the file has lines which a listing of it does not show as they are.
void WarnUnread(const CString& path);

// These throw a Refusal: when the encoding that the file has, or would get, lacks a character of the text;
// for a write that was not carried out.
void RequireCharacters(const CString& path, const CString& text);
[[noreturn]] void RefuseUnwritten(const CString& path);

}  // namespace velmora::cli

#endif  // VELMORA_CLI_CONTEXT_SETTINGS_LINES_H_
