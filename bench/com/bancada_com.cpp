// Times Validacao.Valida_Dados through COM as a compiled host calls it, with a sink connected to
// Progress, so that the yields to the message loop and the events are part of the time.
// Arguments: the invoice file, a working folder, the number of runs. Prints each run's seconds,
// then "mediana_s=" and the median.
#include <windows.h>

#include <ocidl.h>

#include <algorithm>
#include <cstdio>
#include <cwchar>
#include <vector>

#include "QuorvValida.h"

namespace {

// Counts the events, as the lightest real host would.
class Contador final : public IDispatch {
 public:
  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** objeto) override {
    if (IsEqualIID(iid, IID_IUnknown) || IsEqualIID(iid, IID_IDispatch) ||
        IsEqualIID(iid, DIID___Validacao)) {
      *objeto = this;
      return S_OK;
    }
    *objeto = nullptr;
    return E_NOINTERFACE;
  }
  ULONG STDMETHODCALLTYPE AddRef() override { return 2; }
  ULONG STDMETHODCALLTYPE Release() override { return 1; }
  HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* n) override {
    *n = 0;
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*) override {
    return E_NOTIMPL;
  }
  HRESULT STDMETHODCALLTYPE Invoke(DISPID, REFIID, LCID, WORD, DISPPARAMS*, VARIANT*, EXCEPINFO*,
                                   UINT*) override {
    ++eventos;
    return S_OK;
  }
  long eventos = 0;
};

}  // namespace

int wmain(int argc, wchar_t** argv) {
  if (argc != 4) {
    std::printf("uso: bancada_com ARQUIVO DIRETORIO EXECUCOES\n");
    return 2;
  }
  const int execucoes = static_cast<int>(std::wcstol(argv[3], nullptr, 10));
  CoInitialize(nullptr);
  _Validacao* validacao = nullptr;
  if (FAILED(CoCreateInstance(CLSID_Validacao, nullptr, CLSCTX_INPROC_SERVER, IID__Validacao,
                              reinterpret_cast<void**>(&validacao)))) {
    std::printf("QuorvValida.Validacao não está registrada\n");
    return 1;
  }
  IConnectionPointContainer* container = nullptr;
  IConnectionPoint* ponto = nullptr;
  Contador contador;
  DWORD cookie = 0;
  validacao->QueryInterface(IID_IConnectionPointContainer, reinterpret_cast<void**>(&container));
  container->FindConnectionPoint(DIID___Validacao, &ponto);
  ponto->Advise(&contador, &cookie);

  BSTR arquivo = SysAllocString(argv[1]);
  BSTR diretorio = SysAllocString(argv[2]);
  BSTR vazio = SysAllocString(L"");
  BSTR separador = SysAllocString(L"#");
  BSTR numero = SysAllocString(L"");
  LARGE_INTEGER frequencia;
  QueryPerformanceFrequency(&frequencia);
  std::vector<double> segundos;
  short status = -1;
  for (int i = 0; i < execucoes; ++i) {
    LARGE_INTEGER inicio, fim;
    QueryPerformanceCounter(&inicio);
    validacao->Valida_Dados(arquivo, &numero, diretorio, 0, 0, vazio, vazio, separador, &status);
    QueryPerformanceCounter(&fim);
    segundos.push_back(static_cast<double>(fim.QuadPart - inicio.QuadPart) /
                       static_cast<double>(frequencia.QuadPart));
    std::printf("execucao=%d status=%d eventos=%ld segundos=%.4f\n", i + 1, status,
                contador.eventos, segundos.back());
    contador.eventos = 0;
  }
  std::sort(segundos.begin(), segundos.end());
  std::printf("mediana_s=%.4f\n", segundos[segundos.size() / 2]);
  ponto->Unadvise(cookie);
  ponto->Release();
  container->Release();
  validacao->Release();
  for (BSTR b : {arquivo, diretorio, vazio, separador, numero})
    SysFreeString(b);
  CoUninitialize();
  return status == 0 || status == 1 ? 0 : 1;
}
