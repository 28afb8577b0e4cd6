#include "shell/system/shortcut.h"

#include "shell/system/win32.h"

#include <objbase.h>
#include <shlobj.h>

#include <memory>

#include "platform/file.h"

namespace ferrowand {
namespace {

struct ComRelease {
  void operator()(IUnknown* object) const { object->Release(); }
};
template <typename T>
using ComPtr = std::unique_ptr<T, ComRelease>;

class ComScope {
 public:
  ComScope() : started_(SUCCEEDED(CoInitialize(nullptr))) {}
  ~ComScope() {
    if (started_) CoUninitialize();
  }
  ComScope(const ComScope&) = delete;
  ComScope& operator=(const ComScope&) = delete;

 private:
  bool started_;
};

template <typename T>
ComPtr<T> Query(IUnknown& object, REFIID id) {
  void* result = nullptr;
  object.QueryInterface(id, &result);
  return ComPtr<T>(static_cast<T*>(result));
}

}  // namespace

bool MakeStartMenuShortcut() {
  wchar_t program[MAX_PATH] = L"", menu[MAX_PATH] = L"", folder[MAX_PATH] = L"";
  if (!GetModuleFileNameW(nullptr, program, MAX_PATH)) return false;
  if (FAILED(SHGetFolderPathW(nullptr, CSIDL_PROGRAMS | CSIDL_FLAG_CREATE, nullptr,
                              SHGFP_TYPE_CURRENT, menu))) {
    return false;
  }
  if (!GetCurrentDirectoryW(MAX_PATH, folder)) return false;

  const ComScope com;
  void* created = nullptr;
  if (FAILED(CoCreateInstance(CLSID_ShellLink, nullptr, CLSCTX_INPROC_SERVER, IID_IShellLinkW,
                              &created))) {
    return false;
  }
  const ComPtr<IShellLinkW> link(static_cast<IShellLinkW*>(created));
  link->SetPath(program);
  link->SetWorkingDirectory(folder);
  const auto file = Query<IPersistFile>(*link, IID_IPersistFile);
  const std::wstring name = std::wstring(menu) + L"\\Ferrowand.lnk";
  return file && SUCCEEDED(file->Save(name.c_str(), TRUE));
}

void TellShellOfFileTypes() {
  SHChangeNotify(SHCNE_ASSOCCHANGED, SHCNF_IDLIST, nullptr, nullptr);
}

std::string PathOfCommandLine(const std::string& commandLine) {
  const auto quoted = [](const std::string& text) {
    return text.size() >= 2 && text.front() == '"' && text.back() == '"';
  };
  if (file::Find(commandLine) == FindResult::Found) return commandLine;
  constexpr char BLANKS[] = " \t";
  const std::size_t begin = commandLine.find_first_not_of(BLANKS);
  if (begin == std::string::npos) return {};
  const std::string path =
      commandLine.substr(begin, commandLine.find_last_not_of(BLANKS) + 1 - begin);
  return quoted(path) ? path.substr(1, path.size() - 2) : path;
}

}  // namespace ferrowand
