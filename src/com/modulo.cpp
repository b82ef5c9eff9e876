#include "modulo.hpp"

#include <atomic>
#include <mutex>

#include "quorvvalida/geral.hpp"
#include "texto.hpp"

namespace quorv::com {
namespace {

// Set once by DllMain before any other call can reach the server.
HMODULE moduloDoServidor = nullptr;
std::atomic<long> objetos{0};
std::atomic<long> travas{0};
std::once_flag preparado;

// The type library, loaded once from the DLL's own resources and kept: every object asks for it.
std::mutex travaDaBiblioteca;
ITypeLib* biblioteca = nullptr;

}  // namespace

HMODULE Modulo() {
  return moduloDoServidor;
}

void DefineModulo(HMODULE modulo) {
  moduloDoServidor = modulo;
}

std::wstring CaminhoDoModulo() {
  std::wstring caminho(MAX_PATH, L'\0');
  for (;;) {
    const DWORD tamanho =
        GetModuleFileNameW(moduloDoServidor, caminho.data(), static_cast<DWORD>(caminho.size()));
    if (tamanho == 0) return std::wstring();
    if (tamanho < caminho.size()) {
      caminho.resize(tamanho);
      return caminho;
    }
    caminho.resize(caminho.size() * 2);
  }
}

void ObjetoCriado() {
  ++objetos;
}

void ObjetoDestruido() {
  --objetos;
}

void TravaServidor(bool travar) {
  if (travar) {
    ++travas;
  } else {
    --travas;
  }
}

bool PodeDescarregar() {
  return objetos == 0 && travas == 0;
}

void Prepara() {
  std::call_once(preparado, [] {
    HMODULE fixo = nullptr;
    GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_PIN,
                       reinterpret_cast<LPCWSTR>(&Prepara), &fixo);
    const std::wstring dll = CaminhoDoModulo();
    const std::wstring inscricao = dll.substr(0, dll.find_last_of(L'\\') + 1) + L"DllInscE32.dll";
    if (GetFileAttributesW(inscricao.c_str()) != INVALID_FILE_ATTRIBUTES) {
      CarregarBibliotecaInscricao(Utf8(inscricao));
    }
  });
}

HRESULT BibliotecaDeTipos(ITypeLib** resultado) {
  if (resultado == nullptr) return E_POINTER;
  std::lock_guard<std::mutex> trava(travaDaBiblioteca);
  if (biblioteca == nullptr) {
    const HRESULT hr = LoadTypeLibEx(CaminhoDoModulo().c_str(), REGKIND_NONE, &biblioteca);
    if (FAILED(hr)) return hr;
  }
  biblioteca->AddRef();
  *resultado = biblioteca;
  return S_OK;
}

HRESULT InfoDeTipo(REFGUID guid, ITypeInfo** info) {
  ITypeLib* tipos = nullptr;
  HRESULT hr = BibliotecaDeTipos(&tipos);
  if (FAILED(hr)) return hr;
  hr = tipos->GetTypeInfoOfGuid(guid, info);
  tipos->Release();
  return hr;
}

}  // namespace quorv::com
