// Direct3D 9 as the program has it: loaded at run time, for systems that have none, and asked for
// devices when a camera wants one.
#pragma once

#include <string>

#include "shell/direct3d/d3d.h"

namespace ferrowand {

class Reporter;
struct Options;

class Direct3D {
 public:
  // `library` is the file that is loaded. What is referred to outlives it; it outlives the devices.
  Direct3D(std::string library, const Options& options, Reporter& reporter);
  ~Direct3D();
  Direct3D(const Direct3D&) = delete;
  Direct3D& operator=(const Direct3D&) = delete;

  // False, after saying so, where there is none. Also asks anew after it has failed.
  bool Start();
  // Whether devices can be made. Starts it where that was not tried yet; what fails is said once.
  bool IsReady();
  // Says that there is none after all. False.
  bool Refuse();
  // In the first way that works; null where none does.
  OwnedD3d<IDirect3DDevice9> MakeDevice(D3DPRESENT_PARAMETERS& parameters);

 private:
  enum class State { Off, Started, Failed };
  using CreateFunction = IDirect3D9*(WINAPI*)(UINT version);

  bool Create();
  OwnedD3d<IDirect3DDevice9> MakeDevice(D3DDEVTYPE type, D3DPRESENT_PARAMETERS& parameters);

  const std::string library_;
  const Options& options_;
  Reporter& reporter_;
  State state_ = State::Off;
  HMODULE module_ = nullptr;
  CreateFunction create_ = nullptr;
  OwnedD3d<IDirect3D9> direct3d_;
};

}  // namespace ferrowand
