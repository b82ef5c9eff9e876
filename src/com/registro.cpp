#include "registro.hpp"

#include <oaidl.h>
#include <olectl.h>

#include <string>
#include <vector>

#include "modulo.hpp"

namespace quorv::com {
namespace {

// The marshaler of automation interfaces, which every dual interface and dispinterface names.
constexpr const wchar_t* kPSOAInterface = L"{00020424-0000-0000-C000-000000000046}";
constexpr const wchar_t* kPrefixoProgId = L"QuorvValida.";

std::wstring Texto(REFGUID guid) {
  wchar_t texto[40] = {};
  StringFromGUID2(guid, texto, 40);
  return texto;
}

HKEY Raiz(Escopo escopo, HKEY* aberta) {
  const HKEY base = escopo == Escopo::Maquina ? HKEY_LOCAL_MACHINE : HKEY_CURRENT_USER;
  if (RegCreateKeyExW(base, L"Software\\Classes", 0, nullptr, 0, KEY_ALL_ACCESS, nullptr, aberta,
                      nullptr) != ERROR_SUCCESS) {
    return nullptr;
  }
  return *aberta;
}

// Sets a text value (nome null: the key's default value), creating the key as needed.
bool Escreve(HKEY raiz, const std::wstring& chave, const wchar_t* nome, const std::wstring& valor) {
  HKEY aberta = nullptr;
  if (RegCreateKeyExW(raiz, chave.c_str(), 0, nullptr, 0, KEY_SET_VALUE, nullptr, &aberta,
                      nullptr) != ERROR_SUCCESS) {
    return false;
  }
  const LONG resultado =
      RegSetValueExW(aberta, nome, 0, REG_SZ, reinterpret_cast<const BYTE*>(valor.c_str()),
                     static_cast<DWORD>((valor.size() + 1) * sizeof(wchar_t)));
  RegCloseKey(aberta);
  return resultado == ERROR_SUCCESS;
}

void Apaga(HKEY raiz, const std::wstring& chave) {
  RegDeleteTreeW(raiz, chave.c_str());
  RegDeleteKeyW(raiz, chave.c_str());
}

// Deletes a key only when nothing is left under it (neither subkeys nor values).
void ApagaSeVazia(HKEY raiz, const std::wstring& chave) {
  HKEY aberta = nullptr;
  if (RegOpenKeyExW(raiz, chave.c_str(), 0, KEY_READ, &aberta) != ERROR_SUCCESS) return;
  DWORD subchaves = 0;
  DWORD valores = 0;
  const LONG resultado = RegQueryInfoKeyW(aberta, nullptr, nullptr, nullptr, &subchaves, nullptr,
                                          nullptr, &valores, nullptr, nullptr, nullptr, nullptr);
  RegCloseKey(aberta);
  if (resultado == ERROR_SUCCESS && subchaves == 0 && valores == 0) {
    RegDeleteKeyW(raiz, chave.c_str());
  }
}

bool TemSubchaves(HKEY raiz, const std::wstring& chave) {
  HKEY aberta = nullptr;
  if (RegOpenKeyExW(raiz, chave.c_str(), 0, KEY_READ, &aberta) != ERROR_SUCCESS) return false;
  DWORD subchaves = 0;
  RegQueryInfoKeyW(aberta, nullptr, nullptr, nullptr, &subchaves, nullptr, nullptr, nullptr,
                   nullptr, nullptr, nullptr, nullptr);
  RegCloseKey(aberta);
  return subchaves > 0;
}

// What the type library says about itself and each of its types.
struct Tipo {
  std::wstring nome;
  GUID guid;
  TYPEKIND tipo;
  WORD bandeiras;
};

struct Descricao {
  GUID biblioteca;
  WORD maior;
  WORD menor;
  SYSKIND sistema;
  std::wstring ajuda;
  std::vector<Tipo> tipos;
};

HRESULT Descreve(Descricao* descricao) {
  ITypeLib* tipos = nullptr;
  HRESULT hr = BibliotecaDeTipos(&tipos);
  if (FAILED(hr)) return hr;
  TLIBATTR* atributos = nullptr;
  hr = tipos->GetLibAttr(&atributos);
  if (SUCCEEDED(hr)) {
    descricao->biblioteca = atributos->guid;
    descricao->maior = atributos->wMajorVerNum;
    descricao->menor = atributos->wMinorVerNum;
    descricao->sistema = atributos->syskind;
    tipos->ReleaseTLibAttr(atributos);
    BSTR ajuda = nullptr;
    if (SUCCEEDED(tipos->GetDocumentation(-1, nullptr, &ajuda, nullptr, nullptr)) && ajuda) {
      descricao->ajuda = ajuda;
    }
    SysFreeString(ajuda);
  }
  for (UINT i = 0; SUCCEEDED(hr) && i < tipos->GetTypeInfoCount(); ++i) {
    ITypeInfo* info = nullptr;
    hr = tipos->GetTypeInfo(i, &info);
    if (FAILED(hr)) break;
    TYPEATTR* tipo = nullptr;
    BSTR nome = nullptr;
    hr = info->GetTypeAttr(&tipo);
    if (SUCCEEDED(hr)) hr = info->GetDocumentation(MEMBERID_NIL, &nome, nullptr, nullptr, nullptr);
    if (SUCCEEDED(hr)) {
      descricao->tipos.push_back({nome, tipo->guid, tipo->typekind, tipo->wTypeFlags});
    }
    SysFreeString(nome);
    if (tipo != nullptr) info->ReleaseTypeAttr(tipo);
    info->Release();
  }
  tipos->Release();
  return hr;
}

// Interfaces that the automation marshaler serves: dispinterfaces and dual interfaces.
bool InterfaceDeAutomacao(const Tipo& tipo) {
  return tipo.tipo == TKIND_DISPATCH ||
         (tipo.tipo == TKIND_INTERFACE && (tipo.bandeiras & TYPEFLAG_FOLEAUTOMATION) != 0);
}

std::wstring Versao(const Descricao& descricao) {
  return std::to_wstring(descricao.maior) + L"." + std::to_wstring(descricao.menor);
}

std::wstring ChaveDaBiblioteca(const Descricao& descricao) {
  return L"TypeLib\\" + Texto(descricao.biblioteca) + L"\\" + Versao(descricao);
}

const wchar_t* Plataforma(const Descricao& descricao) {
  return descricao.sistema == SYS_WIN64 ? L"win64" : L"win32";
}

bool RegistraTudo(HKEY raiz, const Descricao& descricao) {
  const std::wstring dll = CaminhoDoModulo();
  if (dll.empty()) return false;
  const std::wstring pasta = dll.substr(0, dll.find_last_of(L'\\'));
  const std::wstring biblioteca = Texto(descricao.biblioteca);
  const std::wstring versao = Versao(descricao);
  const std::wstring chave = ChaveDaBiblioteca(descricao);
  bool certo = Escreve(raiz, chave, nullptr, descricao.ajuda) &&
               Escreve(raiz, chave + L"\\0\\" + Plataforma(descricao), nullptr, dll) &&
               Escreve(raiz, chave + L"\\FLAGS", nullptr, L"0") &&
               Escreve(raiz, chave + L"\\HELPDIR", nullptr, pasta);
  for (const Tipo& tipo : descricao.tipos) {
    if (!certo) break;
    if (tipo.tipo == TKIND_COCLASS) {
      const std::wstring progId = kPrefixoProgId + tipo.nome;
      const std::wstring classe = L"CLSID\\" + Texto(tipo.guid);
      certo = Escreve(raiz, classe, nullptr, progId) &&
              Escreve(raiz, classe + L"\\InprocServer32", nullptr, dll) &&
              Escreve(raiz, classe + L"\\InprocServer32", L"ThreadingModel", L"Apartment") &&
              Escreve(raiz, classe + L"\\ProgID", nullptr, progId) &&
              Escreve(raiz, classe + L"\\TypeLib", nullptr, biblioteca) &&
              Escreve(raiz, classe + L"\\Version", nullptr, versao) &&
              Escreve(raiz, progId, nullptr, progId) &&
              Escreve(raiz, progId + L"\\CLSID", nullptr, Texto(tipo.guid));
    } else if (InterfaceDeAutomacao(tipo)) {
      const std::wstring chaveDaInterface = L"Interface\\" + Texto(tipo.guid);
      certo = Escreve(raiz, chaveDaInterface, nullptr, tipo.nome) &&
              Escreve(raiz, chaveDaInterface + L"\\ProxyStubClsid", nullptr, kPSOAInterface) &&
              Escreve(raiz, chaveDaInterface + L"\\ProxyStubClsid32", nullptr, kPSOAInterface) &&
              Escreve(raiz, chaveDaInterface + L"\\TypeLib", nullptr, biblioteca) &&
              Escreve(raiz, chaveDaInterface + L"\\TypeLib", L"Version", versao);
    }
  }
  return certo;
}

void DesregistraTudo(HKEY raiz, const Descricao& descricao) {
  for (const Tipo& tipo : descricao.tipos) {
    if (tipo.tipo != TKIND_COCLASS) continue;
    Apaga(raiz, L"CLSID\\" + Texto(tipo.guid));
    Apaga(raiz, kPrefixoProgId + tipo.nome);
  }
  const std::wstring chave = ChaveDaBiblioteca(descricao);
  Apaga(raiz, chave + L"\\0\\" + Plataforma(descricao));
  // The other bitness's DLL registers the same type library and interfaces; they stay while it
  // is registered.
  if (TemSubchaves(raiz, chave + L"\\0")) return;
  for (const Tipo& tipo : descricao.tipos) {
    if (InterfaceDeAutomacao(tipo)) Apaga(raiz, L"Interface\\" + Texto(tipo.guid));
  }
  Apaga(raiz, chave);
  ApagaSeVazia(raiz, L"TypeLib\\" + Texto(descricao.biblioteca));
}

}  // namespace

HRESULT Registra(Escopo escopo) {
  Descricao descricao;
  if (FAILED(Descreve(&descricao))) return SELFREG_E_TYPELIB;
  HKEY raiz = nullptr;
  if (Raiz(escopo, &raiz) == nullptr) return SELFREG_E_CLASS;
  const bool certo = RegistraTudo(raiz, descricao);
  if (!certo) DesregistraTudo(raiz, descricao);
  RegCloseKey(raiz);
  return certo ? S_OK : SELFREG_E_CLASS;
}

HRESULT Desregistra(Escopo escopo) {
  Descricao descricao;
  if (FAILED(Descreve(&descricao))) return SELFREG_E_TYPELIB;
  HKEY raiz = nullptr;
  if (Raiz(escopo, &raiz) == nullptr) return SELFREG_E_CLASS;
  DesregistraTudo(raiz, descricao);
  RegCloseKey(raiz);
  return S_OK;
}

}  // namespace quorv::com
