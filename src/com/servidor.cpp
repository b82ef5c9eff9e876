// The in-process server's entry points: the class factory, the unload test, and registration
// (machine-wide by regsvr32, or for the current user by regsvr32 /n /i:user).
#include <windows.h>

#include <olectl.h>

#include <cwctype>
#include <new>
#include <string>

#include "classes.hpp"
#include "modulo.hpp"
#include "objeto.hpp"
#include "registro.hpp"

namespace quorv::com {
namespace {

// Creates objects of one class. A factory does not keep the server loaded; LockServer does.
class Fabrica final : public Simples<IClassFactory> {
 public:
  explicit Fabrica(Criacao cria) : cria_(cria) {}

  HRESULT STDMETHODCALLTYPE CreateInstance(IUnknown* externo, REFIID iid, void** objeto) override {
    if (objeto == nullptr) return E_POINTER;
    *objeto = nullptr;
    if (externo != nullptr) return CLASS_E_NOAGGREGATION;
    return cria_(iid, objeto);
  }

  HRESULT STDMETHODCALLTYPE LockServer(BOOL travar) override {
    TravaServidor(travar != FALSE);
    return S_OK;
  }

 private:
  const Criacao cria_;
};

// "user" (any case, blanks around) asks for the current user's registration; nothing or
// "machine" for the machine's.
bool LeEscopo(LPCWSTR linha, Escopo* escopo) {
  std::wstring texto = linha == nullptr ? L"" : linha;
  const auto inicio = texto.find_first_not_of(L" \t");
  const auto fim = texto.find_last_not_of(L" \t");
  texto = inicio == std::wstring::npos ? L"" : texto.substr(inicio, fim - inicio + 1);
  for (wchar_t& c : texto)
    c = static_cast<wchar_t>(std::towlower(c));
  if (texto == L"user") {
    *escopo = Escopo::Usuario;
    return true;
  }
  if (texto.empty() || texto == L"machine") {
    *escopo = Escopo::Maquina;
    return true;
  }
  return false;
}

}  // namespace
}  // namespace quorv::com

extern "C" BOOL WINAPI DllMain(HINSTANCE instancia, DWORD motivo, LPVOID) {
  if (motivo == DLL_PROCESS_ATTACH) {
    quorv::com::DefineModulo(instancia);
    DisableThreadLibraryCalls(instancia);
  }
  return TRUE;
}

STDAPI DllGetClassObject(REFCLSID clsid, REFIID iid, LPVOID* objeto) {
  if (objeto == nullptr) return E_POINTER;
  *objeto = nullptr;
  quorv::com::Prepara();
  std::size_t quantas = 0;
  const quorv::com::Classe* classes = quorv::com::Classes(&quantas);
  for (std::size_t i = 0; i < quantas; ++i) {
    if (!IsEqualCLSID(clsid, *classes[i].clsid)) continue;
    auto* fabrica = new (std::nothrow) quorv::com::Fabrica(classes[i].cria);
    if (fabrica == nullptr) return E_OUTOFMEMORY;
    const HRESULT hr = fabrica->QueryInterface(iid, objeto);
    fabrica->Release();
    return hr;
  }
  return CLASS_E_CLASSNOTAVAILABLE;
}

STDAPI DllCanUnloadNow() {
  return quorv::com::PodeDescarregar() ? S_OK : S_FALSE;
}

STDAPI DllRegisterServer() {
  return quorv::com::Registra(quorv::com::Escopo::Maquina);
}

STDAPI DllUnregisterServer() {
  return quorv::com::Desregistra(quorv::com::Escopo::Maquina);
}

extern "C" HRESULT STDAPICALLTYPE DllInstall(BOOL instalar, LPCWSTR linha) {
  quorv::com::Escopo escopo;
  if (!quorv::com::LeEscopo(linha, &escopo)) return E_INVALIDARG;
  return instalar ? quorv::com::Registra(escopo) : quorv::com::Desregistra(escopo);
}
