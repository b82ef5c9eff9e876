// A host that loads QuorvValida.dll by its path, without registration, as a program that ships the
// DLL beside itself does: DllGetClassObject, the class factory, honest DllCanUnloadNow answers,
// and the DLL staying loaded once used. With the DLL in a folder without DllInscE32.dll, it then
// validates the files of a job list (lines "notas|ARQUIVO|DIRETORIO" or "fichas|..."), writing
// "tipo|status|numero" per job to the result file, for comparison with the command line run
// without a state-registration library.
// Arguments: DLL, job list, result file. Prints differences, then FIM; exit code: their number.
#include <windows.h>

#include <cstdio>
#include <fstream>
#include <sstream>
#include <string>

#include "QuorvValida.h"
#include "cliente.hpp"

namespace {

using cliente::ArgumentosDaValidacao;
using cliente::Falha;
using cliente::falhas;

using DllGetClassObjectFn = HRESULT(STDAPICALLTYPE*)(REFCLSID, REFIID, void**);
using DllCanUnloadNowFn = HRESULT(STDAPICALLTYPE*)();

template <class Funcao>
Funcao Entrada(HMODULE dll, const char* nome) {
  return reinterpret_cast<Funcao>(reinterpret_cast<void (*)()>(GetProcAddress(dll, nome)));
}

}  // namespace

int wmain(int argc, wchar_t** argv) {
  if (argc != 4) {
    std::printf("uso: cliente_direto DLL TAREFAS RESULTADO\n");
    return 100;
  }
  CoInitialize(nullptr);
  HMODULE dll = LoadLibraryW(argv[1]);
  if (dll == nullptr) {
    Falha("a DLL não carregou");
    std::printf("FIM\n");
    return falhas;
  }
  auto obtemClasse = Entrada<DllGetClassObjectFn>(dll, "DllGetClassObject");
  auto podeDescarregar = Entrada<DllCanUnloadNowFn>(dll, "DllCanUnloadNow");
  if (obtemClasse == nullptr || podeDescarregar == nullptr) Falha("entradas ausentes");

  // Counts: nothing alive; an object alive; a lock held; all released.
  if (podeDescarregar() != S_OK) Falha("DllCanUnloadNow antes de tudo");
  IClassFactory* fabrica = nullptr;
  if (FAILED(obtemClasse(CLSID_Validacao, IID_IClassFactory, reinterpret_cast<void**>(&fabrica)))) {
    Falha("sem fábrica de Validacao");
    return falhas;
  }
  void* nada = nullptr;
  if (obtemClasse(IID__Validacao, IID_IClassFactory, &nada) != CLASS_E_CLASSNOTAVAILABLE) {
    Falha("fábrica para um identificador que não é de classe");
  }
  _Validacao* validacao = nullptr;
  fabrica->CreateInstance(nullptr, IID__Validacao, reinterpret_cast<void**>(&validacao));
  IUnknown* agregado = nullptr;
  if (fabrica->CreateInstance(reinterpret_cast<IUnknown*>(validacao), IID_IUnknown,
                              reinterpret_cast<void**>(&agregado)) != CLASS_E_NOAGGREGATION) {
    Falha("agregação aceita");
  }
  if (validacao == nullptr) Falha("CreateInstance");
  if (podeDescarregar() != S_FALSE) Falha("DllCanUnloadNow com um objeto vivo");
  if (validacao) validacao->Release();
  if (podeDescarregar() != S_OK) Falha("DllCanUnloadNow depois de soltar o objeto");
  fabrica->LockServer(TRUE);
  if (podeDescarregar() != S_FALSE) Falha("DllCanUnloadNow com o servidor travado");
  fabrica->LockServer(FALSE);
  if (podeDescarregar() != S_OK) Falha("DllCanUnloadNow depois de destravar");

  // The jobs, each through a fresh object from the factory.
  std::ifstream tarefas(argv[2]);
  std::ofstream resultado(argv[3], std::ios::binary);
  std::string linha;
  while (std::getline(tarefas, linha)) {
    if (linha.empty()) continue;
    std::istringstream campos(linha);
    std::string tipo, arquivo, diretorio;
    std::getline(campos, tipo, '|');
    std::getline(campos, arquivo, '|');
    std::getline(campos, diretorio, '|');
    ArgumentosDaValidacao a(cliente::Largo(arquivo), cliente::Largo(diretorio));
    short status = -1;
    if (tipo == "notas") {
      _Validacao* v = nullptr;
      fabrica->CreateInstance(nullptr, IID__Validacao, reinterpret_cast<void**>(&v));
      v->Valida_Dados(a.nome, &a.numero, a.pasta, 0, 0, a.vazio, a.vazio, a.separador, &status);
      v->Release();
    } else {
      IClassFactory* fichas = nullptr;
      obtemClasse(CLSID_ValidacaoFichaCadastral, IID_IClassFactory,
                  reinterpret_cast<void**>(&fichas));
      _ValidacaoFichaCadastral* f = nullptr;
      fichas->CreateInstance(nullptr, IID__ValidacaoFichaCadastral, reinterpret_cast<void**>(&f));
      f->Valida_Fichas(a.nome, &a.numero, a.pasta, 0, 0, a.vazio, a.vazio, a.separador, &status);
      f->Release();
      fichas->Release();
    }
    resultado << tipo << '|' << status << '|' << cliente::Utf8({a.numero, SysStringLen(a.numero)})
              << '\n';
  }
  fabrica->Release();

  // Once used, the DLL stays in the process whatever the host does.
  if (podeDescarregar() != S_OK) Falha("DllCanUnloadNow no fim");
  FreeLibrary(dll);
  if (GetModuleHandleW(argv[1]) == nullptr) Falha("a DLL foi descarregada");
  CoUninitialize();
  return cliente::Termina();
}
