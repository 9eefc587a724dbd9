#ifndef VORNADEL_PLATFORM_FILES_H
#define VORNADEL_PLATFORM_FILES_H

#include <string>

// Every file operation of the plug-in goes through here. Paths are Windows paths in the system
// code page (GBK), formed exactly as on Windows: drive letters and backslashes. On Windows they
// are handed to the C runtime and Win32 unchanged; on POSIX they are mapped first (see OsPath).
// Names stay clear of the Win32 macros (CopyFile, GetWindowText ...), so that a unit including
// <windows.h> declares and defines the same functions as every other unit.
namespace platform {

// The path as the operating system needs it. Windows: unchanged. POSIX: GBK -> UTF-8, "\" -> "/",
// "X:" through the drive table VORNADEL_DRIVES ("C=/home/u/c;D=/srv/d"), a leading "\" to the
// current drive (VORNADEL_CURRENT_DRIVE, default C). A path on a drive without a mapping gives ""
// (no such drive), so every operation on it fails as on Windows.
std::string OsPath(const std::string& path);

// _access(path, 0) == 0: true when a file or folder exists at path.
bool PathExists(const std::string& path);

// _mkdir: creates the last level of path only; false when it fails (also when it exists).
bool MakeFolder(const std::string& path);

// remove(): deletes a file; false when there was nothing to delete or it failed.
bool RemoveFile(const std::string& path);

// CopyFileA: copies a file; with failIfExists an existing target is left alone and false is
// returned; otherwise an existing target is replaced.
bool CopyOneFile(const std::string& from, const std::string& to, bool failIfExists);

// Reads the whole file as bytes (no line-end translation). False when it cannot be opened.
bool ReadWholeFile(const std::string& path, std::string& bytes);

// Writes bytes as the new content of path: they go to a temporary file beside path, which then
// replaces path; if any step fails, path stays as it was and false is returned.
bool ReplaceFileBytes(const std::string& path, const std::string& bytes);

// Writes text as a text file: every "\n" becomes "\r\n" (CRLF everywhere), then as
// ReplaceFileBytes.
bool ReplaceTextFile(const std::string& path, const std::string& text);

}  // namespace platform

#endif
