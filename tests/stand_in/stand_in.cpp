// Stands in for a tool of the game, or the game, under whatever name it is copied to: NAME.exe does
// what NAME.txt beside it tells, line by line, and writes into NAME.log how it was called. Without
// a text it ends at once. The lines:
//   print TEXT          at once, as a tool does on a terminal
//   hold TEXT           held back until the end, as on a pipe
//   repeat COUNT TEXT
//   sleep MILLISECONDS
//   leave EXT TEXT      a file of the map's name; "leave bsp level". ; ends a line of it
//   need EXT            ends with status 1, after a line of stars, when there is no such file
//   end STATUS
//   die                 by a fault
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <thread>

#ifdef _WIN32
#include <windows.h>
#else
#include <unistd.h>
#endif

namespace {

namespace fs = std::filesystem;

struct Call {
  fs::path program;
  std::string line;       // the whole command line
  std::string lastWord;   // the map
  std::string directory;  // the current one
  std::string about;      // priority and console, where the system has them
};

#ifdef _WIN32
std::string Narrow(const std::wstring& text) {
  std::string narrow(text.size() * 3, '\0');
  narrow.resize(static_cast<std::size_t>(
      WideCharToMultiByte(CP_UTF8, 0, text.data(), static_cast<int>(text.size()), narrow.data(),
                          static_cast<int>(narrow.size()), nullptr, nullptr)));
  return narrow;
}

Call Told(int argc, char** argv) {
  wchar_t program[1000] = L"", directory[1000] = L"", title[1000] = L"";
  GetModuleFileNameW(nullptr, program, 1000);
  GetCurrentDirectoryW(1000, directory);
  GetConsoleTitleW(title, 1000);
  STARTUPINFOW start{};
  GetStartupInfoW(&start);
  DWORD console = 0;
  const bool hasConsole = GetConsoleProcessList(&console, 1) > 0;
  std::string about = "priority " + std::to_string(GetPriorityClass(GetCurrentProcess()));
  about += hasConsole ? " console" : " no console";
  about += " show " + std::to_string(start.wShowWindow);
  about += " title " + Narrow(start.lpTitle ? start.lpTitle : L"");
  return {program, Narrow(GetCommandLineW()), argc > 1 ? argv[argc - 1] : "", Narrow(directory),
          about};
}
#else
Call Told(int argc, char** argv) {
  Call call{fs::read_symlink("/proc/self/exe"), "", argc > 1 ? argv[argc - 1] : "",
            fs::current_path().string(), isatty(1) != 0 ? "terminal" : "no terminal"};
  for (int i = 0; i < argc; ++i) call.line.append(i > 0 ? " [" : "[").append(argv[i]).append("]");
  return call;
}
#endif

fs::path Beside(const Call& call, const char* extension) {
  return fs::path(call.program).replace_extension(extension);
}

// The text behind the first word, which goes.
std::string TakeWord(std::string& line) {
  const std::size_t end = std::min(line.find(' '), line.size());
  const std::string word = line.substr(0, end);
  line.erase(0, end + 1);
  return word;
}

void Do(const Call& call, std::string line) {
  const std::string word = TakeWord(line);
  if (word == "print" || word == "hold") {
    std::printf("%s\n", line.c_str());
    if (word == "print") std::fflush(stdout);
  } else if (word == "repeat") {
    const int count = std::stoi(TakeWord(line));
    for (int i = 0; i < count; ++i) std::printf("%s %d\n", line.c_str(), i);
  } else if (word == "sleep") {
    std::this_thread::sleep_for(std::chrono::milliseconds(std::stoi(line)));
  } else if (word == "leave") {
    const std::string extension = TakeWord(line);
    std::ranges::replace(line, ';', '\n');
    std::ofstream(call.lastWord + "." + extension, std::ios::binary) << line;
  } else if (word == "need") {
    if (std::ifstream(call.lastWord + "." + line)) return;
    std::printf("************ ERROR ************\ncannot open %s\n", line.c_str());
    std::exit(1);
  } else if (word == "end") {
    std::exit(std::stoi(line));
  } else if (word == "die") {
    std::abort();
  }
}

}  // namespace

int main(int argc, char** argv) {
  const Call call = Told(argc, argv);
  std::ofstream(Beside(call, ".log"), std::ios::binary | std::ios::app) << call.line << '\n'
                                                                        << call.directory << '\n'
                                                                        << call.about << '\n';
  std::ifstream orders(Beside(call, ".txt"));
  for (std::string line; std::getline(orders, line);) {
    if (!line.empty() && line.back() == '\r') line.pop_back();
    Do(call, line);
  }
}
