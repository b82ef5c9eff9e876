// Progress and FichaProgress as a compiled host sinks them: through IConnectionPointContainer,
// several sinks at once, one answering only IDispatch, one failing, one disconnecting during the
// run. Every sink must receive the same values, in the same order, as the library's own callback
// gives for the same file; a sink that sets the form run's percentage to -1 stops its events as
// the callback doing the same does, without changing its result; window messages waiting when the
// run starts are handled before the first event; a run started from an event is refused with 9;
// a warning recorded from an event lands in the warnings file where the callback's would.
// Arguments: an invoice file, a form file, a working folder, and the DllInscE32.dll the component
// loads (the library's own runs here load it too). Prints one line per difference, then FIM; the
// exit code is the number of differences.
#include <windows.h>

#include <ocidl.h>
#include <olectl.h>

#include <cstdio>
#include <cstring>
#include <string>
#include <vector>

#include "QuorvValida.h"
#include "cliente.hpp"
#include "quorvvalida/geral.hpp"
#include "quorvvalida/validacao.hpp"
#include "quorvvalida/validacao_ficha_cadastral.hpp"

namespace {

using cliente::ArgumentosDaValidacao;
using cliente::Falha;
using cliente::Utf8;

// Messages handled by the test's window, so that a test can tell when the run yielded.
int mensagensAtendidas = 0;

LRESULT CALLBACK Janela(HWND janela, UINT mensagem, WPARAM w, LPARAM l) {
  if (mensagem == WM_USER) {
    ++mensagensAtendidas;
    return 0;
  }
  return DefWindowProcW(janela, mensagem, w, l);
}

// What a sink does with each event.
enum class Conduta { Anota, Falha, Desconecta, MudaParaMenosUm, Reentra, Grava };

// A sink of the event dispinterface (or, with soDespacho, of IDispatch alone, as script engines
// are), recording the values it receives.
class Receptor final : public IDispatch {
 public:
  Receptor(REFIID eventos, bool soDespacho, Conduta conduta)
      : eventos_(eventos), soDespacho_(soDespacho), conduta_(conduta) {}

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** objeto) override {
    if (IsEqualIID(iid, IID_IUnknown) || IsEqualIID(iid, IID_IDispatch) ||
        (!soDespacho_ && IsEqualIID(iid, eventos_))) {
      *objeto = static_cast<IDispatch*>(this);
      AddRef();
      return S_OK;
    }
    *objeto = nullptr;
    return E_NOINTERFACE;
  }
  ULONG STDMETHODCALLTYPE AddRef() override { return ++referencias_; }
  ULONG STDMETHODCALLTYPE Release() override { return --referencias_; }
  HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* n) override {
    *n = 0;
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*) override {
    return E_NOTIMPL;
  }
  HRESULT STDMETHODCALLTYPE Invoke(DISPID id, REFIID, LCID, WORD bandeiras, DISPPARAMS* p, VARIANT*,
                                   EXCEPINFO*, UINT*) override {
    if (id != 1 || bandeiras != DISPATCH_METHOD || p == nullptr || p->cArgs != 1 ||
        V_VT(&p->rgvarg[0]) != (VT_R8 | VT_BYREF)) {
      Falha("evento com argumentos inesperados");
      return DISP_E_MEMBERNOTFOUND;
    }
    double& valor = *V_R8REF(&p->rgvarg[0]);
    valores.push_back(valor);
    if (valores.size() == 1) mensagensNoPrimeiro = mensagensAtendidas;
    switch (conduta_) {
      case Conduta::Falha:
        return E_FAIL;
      case Conduta::Desconecta:
        if (ponto != nullptr) ponto->Unadvise(cookie);
        ponto = nullptr;
        return S_OK;
      case Conduta::MudaParaMenosUm:
        valor = -1;
        return S_OK;
      case Conduta::Reentra:
        // A host whose message handler starts another run on the same object meanwhile.
        if (valores.size() == 1 && validacao != nullptr) {
          BSTR vazio = SysAllocString(L"");
          BSTR numero = SysAllocString(L"intocado");
          validacao->Valida_Dados(vazio, &numero, vazio, 0, 0, vazio, vazio, vazio,
                                  &statusReentrante);
          numeroReentrante = numero;
          SysFreeString(numero);
          SysFreeString(vazio);
        }
        return S_OK;
      case Conduta::Grava:
        // A host that records a warning of its own against the line being read.
        if (valores.size() == 1 && validacao != nullptr) {
          double linha = 0;
          VARIANT_BOOL gravou = VARIANT_FALSE;
          validacao->Gravar_Erro(201, &linha, &gravou);
          gravouNoEvento = gravou == VARIANT_TRUE;
        }
        return S_OK;
      case Conduta::Anota:
        return S_OK;
    }
    return S_OK;
  }

  std::vector<double> valores;
  int mensagensNoPrimeiro = -1;
  _Validacao* validacao = nullptr;
  short statusReentrante = -1;
  std::wstring numeroReentrante;
  bool gravouNoEvento = false;
  IConnectionPoint* ponto = nullptr;
  DWORD cookie = 0;

 private:
  const IID eventos_;
  const bool soDespacho_;
  const Conduta conduta_;
  ULONG referencias_ = 1;
};

IConnectionPoint* PontoDe(IUnknown* objeto, REFIID eventos) {
  IConnectionPointContainer* container = nullptr;
  if (FAILED(objeto->QueryInterface(IID_IConnectionPointContainer,
                                    reinterpret_cast<void**>(&container)))) {
    Falha("sem IConnectionPointContainer");
    return nullptr;
  }
  IConnectionPoint* ponto = nullptr;
  if (FAILED(container->FindConnectionPoint(eventos, &ponto))) Falha("sem ponto de conexão");
  IConnectionPoint* outro = nullptr;
  if (container->FindConnectionPoint(IID_IDispatch, &outro) != CONNECT_E_NOCONNECTION) {
    Falha("ponto de conexão para uma interface que não é de eventos");
  }
  IEnumConnectionPoints* pontos = nullptr;
  ULONG quantos = 0;
  IConnectionPoint* lista[2] = {};
  if (FAILED(container->EnumConnectionPoints(&pontos)) ||
      pontos->Next(2, lista, &quantos) != S_FALSE || quantos != 1 || lista[0] != ponto) {
    Falha("EnumConnectionPoints");
  }
  for (ULONG i = 0; i < quantos; ++i)
    lista[i]->Release();
  if (pontos) pontos->Release();
  IID conectada = {};
  if (ponto == nullptr || FAILED(ponto->GetConnectionInterface(&conectada)) ||
      !IsEqualIID(conectada, eventos)) {
    Falha("GetConnectionInterface");
  }
  IProvideClassInfo2* classe = nullptr;
  GUID fonte = {};
  if (FAILED(objeto->QueryInterface(IID_IProvideClassInfo2, reinterpret_cast<void**>(&classe))) ||
      FAILED(classe->GetGUID(GUIDKIND_DEFAULT_SOURCE_DISP_IID, &fonte)) ||
      !IsEqualIID(fonte, eventos)) {
    Falha("IProvideClassInfo2 não dá a interface de eventos");
  }
  if (classe) classe->Release();
  container->Release();
  return ponto;
}

void Conecta(IConnectionPoint* ponto, Receptor& receptor) {
  if (FAILED(ponto->Advise(&receptor, &receptor.cookie))) Falha("Advise recusado");
  receptor.ponto = ponto;
}

void ComparaValores(const char* qual, const std::vector<double>& obtidos,
                    const std::vector<double>& esperados) {
  if (obtidos.size() != esperados.size()) {
    Falha(std::string(qual) + ": " + std::to_string(obtidos.size()) +
          " eventos, a biblioteca deu " + std::to_string(esperados.size()));
    return;
  }
  for (std::size_t i = 0; i < obtidos.size(); ++i) {
    if (std::memcmp(&obtidos[i], &esperados[i], sizeof(double)) != 0) {
      Falha(std::string(qual) + ": evento " + std::to_string(i) + " vale " +
            std::to_string(obtidos[i]) + ", a biblioteca deu " + std::to_string(esperados[i]));
      return;
    }
  }
}

// The invoice run: four sinks at once against the library's own sequence of values.
void Notas(HWND janela, const std::wstring& arquivo, const std::wstring& trabalho) {
  std::vector<double> esperados;
  {
    quorv::Validacao biblioteca;
    biblioteca.Progress = [&](double& valor) { esperados.push_back(valor); };
    std::string numero;
    biblioteca.Valida_Dados(Utf8(arquivo), numero, Utf8(trabalho));
  }
  if (esperados.empty()) Falha("a biblioteca não deu eventos de notas");

  _Validacao* validacao = nullptr;
  if (FAILED(CoCreateInstance(CLSID_Validacao, nullptr, CLSCTX_INPROC_SERVER, IID__Validacao,
                              reinterpret_cast<void**>(&validacao)))) {
    Falha("Validacao não foi criada");
    return;
  }
  IConnectionPoint* ponto = PontoDe(validacao, DIID___Validacao);
  if (ponto == nullptr) return;
  Receptor tipado(DIID___Validacao, false, Conduta::Anota);
  Receptor despacho(DIID___Validacao, true, Conduta::Anota);
  Receptor falho(DIID___Validacao, false, Conduta::Falha);
  Receptor fugaz(DIID___Validacao, false, Conduta::Desconecta);
  for (Receptor* r : {&tipado, &despacho, &falho, &fugaz})
    Conecta(ponto, *r);
  if (ponto->Unadvise(12345) != CONNECT_E_NOCONNECTION) Falha("Unadvise de cookie desconhecido");
  IEnumConnections* conexoes = nullptr;
  CONNECTDATA dados[8] = {};
  ULONG quantas = 0;
  if (FAILED(ponto->EnumConnections(&conexoes)) || conexoes->Next(8, dados, &quantas) != S_FALSE ||
      quantas != 4) {
    Falha("EnumConnections não lista os quatro receptores");
  }
  for (ULONG i = 0; i < quantas; ++i)
    dados[i].pUnk->Release();
  if (conexoes) conexoes->Release();

  PostMessageW(janela, WM_USER, 0, 0);
  ArgumentosDaValidacao a(arquivo, trabalho);
  short status = -1;
  validacao->Valida_Dados(a.nome, &a.numero, a.pasta, 0, 0, a.vazio, a.vazio, a.separador, &status);
  if (status != 1 && status != 0) Falha("status de notas " + std::to_string(status));
  ComparaValores("notas, receptor tipado", tipado.valores, esperados);
  ComparaValores("notas, receptor só IDispatch", despacho.valores, esperados);
  ComparaValores("notas, receptor que falha", falho.valores, esperados);
  if (fugaz.valores.size() != 1) Falha("o receptor que se desconectou recebeu mais de um evento");
  if (tipado.mensagensNoPrimeiro != 1)
    Falha("a validação não atendeu as mensagens antes do evento");
  for (Receptor* r : {&tipado, &despacho, &falho})
    ponto->Unadvise(r->cookie);

  Receptor reentrante(DIID___Validacao, false, Conduta::Reentra);
  reentrante.validacao = validacao;
  Conecta(ponto, reentrante);
  short statusDeFora = -1;
  validacao->Valida_Dados(a.nome, &a.numero, a.pasta, 0, 0, a.vazio, a.vazio, a.separador,
                          &statusDeFora);
  if (reentrante.statusReentrante != 9 || reentrante.numeroReentrante != L"intocado") {
    Falha("uma validação começada durante outra não foi recusada com 9");
  }
  if (statusDeFora != status) Falha("a validação em curso mudou com a tentativa de outra");
  ComparaValores("notas, receptor reentrante", reentrante.valores, esperados);
  ponto->Unadvise(reentrante.cookie);
  ponto->Release();
  validacao->Release();
}

std::string Conteudo(const std::wstring& caminho) {
  std::string bytes;
  FILE* arquivo = _wfopen(caminho.c_str(), L"rb");
  if (arquivo == nullptr) return "(ausente)";
  char bloco[65536];
  for (std::size_t lidos; (lidos = std::fread(bloco, 1, sizeof bloco, arquivo)) > 0;) {
    bytes.append(bloco, lidos);
  }
  std::fclose(arquivo);
  return bytes;
}

// A warning recorded from the event, during the run, lands in the warnings file exactly where the
// library's own callback doing the same puts it.
void GravaNoEvento(const std::wstring& arquivo, const std::wstring& trabalho) {
  const std::wstring pastaDaBiblioteca = trabalho + L"\\biblioteca";
  const std::wstring pastaDoCom = trabalho + L"\\com";
  CreateDirectoryW(pastaDaBiblioteca.c_str(), nullptr);
  CreateDirectoryW(pastaDoCom.c_str(), nullptr);
  {
    quorv::Validacao biblioteca;
    bool primeiro = true;
    biblioteca.Progress = [&](double&) {
      if (primeiro) biblioteca.Gravar_Erro(201);
      primeiro = false;
    };
    std::string numero;
    biblioteca.Valida_Dados(Utf8(arquivo), numero, Utf8(pastaDaBiblioteca));
  }
  _Validacao* validacao = nullptr;
  CoCreateInstance(CLSID_Validacao, nullptr, CLSCTX_INPROC_SERVER, IID__Validacao,
                   reinterpret_cast<void**>(&validacao));
  IConnectionPoint* ponto = validacao ? PontoDe(validacao, DIID___Validacao) : nullptr;
  if (ponto == nullptr) return;
  Receptor grava(DIID___Validacao, false, Conduta::Grava);
  grava.validacao = validacao;
  Conecta(ponto, grava);
  ArgumentosDaValidacao a(arquivo, pastaDoCom);
  short status = -1;
  validacao->Valida_Dados(a.nome, &a.numero, a.pasta, 0, 0, a.vazio, a.vazio, a.separador, &status);
  if (!grava.gravouNoEvento) Falha("Gravar_Erro no evento não gravou");
  const std::string esperado = Conteudo(pastaDaBiblioteca + L"\\ADVERTENCIAS.TXT");
  if (esperado.find("201#") == std::string::npos) Falha("a biblioteca não gravou no evento");
  if (Conteudo(pastaDoCom + L"\\ADVERTENCIAS.TXT") != esperado) {
    Falha("a advertência gravada no evento difere da biblioteca");
  }
  ponto->Unadvise(grava.cookie);
  ponto->Release();
  validacao->Release();
}

// The form run: a sink that sets the percentage to -1 at the first event stops the rest of the
// events, as the library's own callback doing the same does; the run's result is unchanged.
void Fichas(const std::wstring& arquivo, const std::wstring& trabalho) {
  std::vector<double> esperados;
  std::vector<double> esperadosMudando;
  short statusSemEventos = -1;
  {
    quorv::ValidacaoFichaCadastral biblioteca;
    std::string numero;
    biblioteca.FichaProgress = [&](double& valor) { esperados.push_back(valor); };
    statusSemEventos = biblioteca.Valida_Fichas(Utf8(arquivo), numero, Utf8(trabalho));
    biblioteca.FichaProgress = [&](double& valor) {
      esperadosMudando.push_back(valor);
      valor = -1;
    };
    biblioteca.Valida_Fichas(Utf8(arquivo), numero, Utf8(trabalho));
  }
  if (esperadosMudando.size() != 1) Falha("a biblioteca não parou os eventos depois de -1");

  _ValidacaoFichaCadastral* fichas = nullptr;
  if (FAILED(CoCreateInstance(CLSID_ValidacaoFichaCadastral, nullptr, CLSCTX_INPROC_SERVER,
                              IID__ValidacaoFichaCadastral, reinterpret_cast<void**>(&fichas)))) {
    Falha("ValidacaoFichaCadastral não foi criada");
    return;
  }
  IConnectionPoint* ponto = PontoDe(fichas, DIID___ValidacaoFichaCadastral);
  if (ponto == nullptr) return;
  ArgumentosDaValidacao a(arquivo, trabalho);
  short status = -1;

  Receptor anota(DIID___ValidacaoFichaCadastral, true, Conduta::Anota);
  Conecta(ponto, anota);
  fichas->Valida_Fichas(a.nome, &a.numero, a.pasta, 0, 0, a.vazio, a.vazio, a.separador, &status);
  ComparaValores("fichas", anota.valores, esperados);
  if (status != statusSemEventos) Falha("status de fichas " + std::to_string(status));
  ponto->Unadvise(anota.cookie);

  Receptor muda(DIID___ValidacaoFichaCadastral, false, Conduta::MudaParaMenosUm);
  Conecta(ponto, muda);
  fichas->Valida_Fichas(a.nome, &a.numero, a.pasta, 0, 0, a.vazio, a.vazio, a.separador, &status);
  ComparaValores("fichas, receptor que muda o valor", muda.valores, esperadosMudando);
  if (status != statusSemEventos) Falha("o valor mudado alterou o status");
  ponto->Unadvise(muda.cookie);

  ponto->Release();
  fichas->Release();
}

}  // namespace

int wmain(int argc, wchar_t** argv) {
  if (argc != 5) {
    std::printf("uso: eventos NOTAS FICHAS DIRETORIO DLLINSCE32\n");
    return 100;
  }
  if (!quorv::CarregarBibliotecaInscricao(Utf8(argv[4]))) Falha("DllInscE32.dll não carregou");
  CoInitialize(nullptr);
  WNDCLASSW classe = {};
  classe.lpfnWndProc = Janela;
  classe.hInstance = GetModuleHandleW(nullptr);
  classe.lpszClassName = L"QuorvValidaTeste";
  RegisterClassW(&classe);
  HWND janela = CreateWindowW(L"QuorvValidaTeste", L"", 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr,
                              classe.hInstance, nullptr);
  Notas(janela, argv[1], argv[3]);
  GravaNoEvento(argv[1], argv[3]);
  Fichas(argv[2], argv[3]);
  DestroyWindow(janela);
  CoUninitialize();
  return cliente::Termina();
}
