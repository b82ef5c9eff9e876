#include "component/shared/inscricao.hpp"

#include <memory>
#include <mutex>
#include <string>
#include <utility>

#include "component/shared/cp1252.hpp"
#include "quorvvalida/geral.hpp"

#if defined(_WIN32)
#include <windows.h>

#include <filesystem>
#elif !defined(__EMSCRIPTEN__)
#include <dlfcn.h>
#endif

namespace quorv {
namespace {

#if defined(_WIN32)
#define QUORV_CHAMADA_PADRAO __stdcall
constexpr const char* kBibliotecaPadrao = "DllInscE32.dll";
#elif defined(__APPLE__)
#define QUORV_CHAMADA_PADRAO
constexpr const char* kBibliotecaPadrao = "libDllInscE32.dylib";
#else
#define QUORV_CHAMADA_PADRAO
constexpr const char* kBibliotecaPadrao = "libDllInscE32.so";
#endif

// ConsisteInscricaoEstadual: registration number and UF as single-byte text; 0 = accepted.
using FuncaoBiblioteca = int16_t(QUORV_CHAMADA_PADRAO*)(const char* inscricao, const char* uf);

}  // namespace

namespace inscricao {

// The checker in force: a host's function when one was given, else the library. The library is
// closed code of unknown thread safety: every call into it, from any run on any thread, holds
// `trava`, one lock for the whole process. A host's function is called as it is.
struct Verificador {
  VerificadorInscricao funcao;
  FuncaoBiblioteca biblioteca = nullptr;
  std::mutex* trava = nullptr;
};

}  // namespace inscricao

namespace {

using inscricao::Verificador;

// Loads a library through the platform's loader and finds the check in it. A library that was
// loaded stays loaded for the life of the process. A WebAssembly module has no loader: there the
// check is a host's function or none.
FuncaoBiblioteca CarregaBiblioteca(const std::string& caminho) {
#if defined(__EMSCRIPTEN__)
  static_cast<void>(caminho);
  return nullptr;
#elif defined(_WIN32)
  const std::wstring largo = std::filesystem::u8path(caminho).wstring();
  HMODULE modulo = LoadLibraryW(largo.c_str());
  if (modulo == nullptr) return nullptr;
  // GetProcAddress answers a generic function pointer; the cast goes through void (*)(), the
  // type that stands for "any function", on its way to the library's real signature.
  auto funcao = reinterpret_cast<FuncaoBiblioteca>(
      reinterpret_cast<void (*)()>(GetProcAddress(modulo, "ConsisteInscricaoEstadual")));
  if (funcao == nullptr) FreeLibrary(modulo);
  return funcao;
#else
  void* modulo = dlopen(caminho.c_str(), RTLD_NOW | RTLD_LOCAL);
  if (modulo == nullptr) return nullptr;
  auto funcao = reinterpret_cast<FuncaoBiblioteca>(dlsym(modulo, "ConsisteInscricaoEstadual"));
  if (funcao == nullptr) dlclose(modulo);
  return funcao;
#endif
}

// The one piece of process-wide state: who answers the state-registration check.
class Registro {
 public:
  static Registro& Global() {
    static Registro registro;
    return registro;
  }

  std::shared_ptr<const Verificador> Atual() {
    std::lock_guard<std::mutex> trava(trava_);
    if (substituto_) return substituto_;
    if (!biblioteca_ && !procurouPadrao_) {
      procurouPadrao_ = true;
      if (FuncaoBiblioteca funcao = CarregaBiblioteca(kBibliotecaPadrao)) {
        biblioteca_ = std::make_shared<Verificador>(Verificador{{}, funcao, &chamadas_});
      }
    }
    return biblioteca_;
  }

  void Substitui(VerificadorInscricao funcao) {
    std::lock_guard<std::mutex> trava(trava_);
    substituto_ =
        funcao ? std::make_shared<Verificador>(Verificador{std::move(funcao), nullptr, nullptr})
               : nullptr;
  }

  bool UsaBiblioteca(const std::string& caminho) {
    FuncaoBiblioteca funcao = CarregaBiblioteca(caminho);
    if (funcao == nullptr) return false;
    std::lock_guard<std::mutex> trava(trava_);
    biblioteca_ = std::make_shared<Verificador>(Verificador{{}, funcao, &chamadas_});
    substituto_ = nullptr;
    return true;
  }

 private:
  std::mutex trava_;
  // Held around every call into a loaded library, whichever library and whichever run.
  std::mutex chamadas_;
  std::shared_ptr<const Verificador> substituto_;
  std::shared_ptr<const Verificador> biblioteca_;
  bool procurouPadrao_ = false;
};

}  // namespace

namespace inscricao {

std::shared_ptr<const Verificador> Atual() {
  return Registro::Global().Atual();
}

bool Valida(const Verificador* verificador, std::string_view inscricao, std::string_view uf) {
  if (verificador == nullptr) return false;
  if (verificador->biblioteca != nullptr) {
    const std::string numero(inscricao);
    const std::string estado(uf);
    std::lock_guard<std::mutex> trava(*verificador->trava);
    return verificador->biblioteca(numero.c_str(), estado.c_str()) == 0;
  }
  try {
    return verificador->funcao(cp1252::ParaUtf8(inscricao), cp1252::ParaUtf8(uf)) == 0;
  } catch (...) {
    // A host's checker that fails refuses the number, as a failing library call does.
    return false;
  }
}

bool Valida(std::string_view inscricao, std::string_view uf) {
  return Valida(Atual().get(), inscricao, uf);
}

}  // namespace inscricao

bool ValidaInscricaoEstadual(const std::string& inscricao, const std::string& uf) {
  return inscricao::Valida(cp1252::DeUtf8(inscricao), cp1252::DeUtf8(uf));
}

void DefinirVerificadorInscricao(VerificadorInscricao verificador) {
  Registro::Global().Substitui(std::move(verificador));
}

bool CarregarBibliotecaInscricao(const std::string& caminho) {
  return Registro::Global().UsaBiblioteca(caminho);
}

bool VerificadorInscricaoDisponivel() {
  return Registro::Global().Atual() != nullptr;
}

}  // namespace quorv
