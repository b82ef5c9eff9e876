// IDispatch as compiled late-binding hosts (VB6, VBA, Delphi, C++) call it: typed by-reference
// arguments (VT_BYREF | VT_BSTR and the like), named arguments, DISPID_PROPERTYPUT, omitted
// optionals marked VT_ERROR / DISP_E_PARAMNOTFOUND, and the errors each wrong call answers with,
// with their IErrorInfo and EXCEPINFO. Argument: a clean invoice file. Prints one line per
// difference, then FIM; the exit code is the number of differences.
#include <windows.h>

#include <oleauto.h>

#include <cstdio>
#include <string>
#include <vector>

#include "QuorvValida.h"
#include "cliente.hpp"

namespace {

using cliente::Falha;

void Confere(const std::string& descricao, bool certo) {
  if (!certo) Falha(descricao);
}

IDispatch* Cria(REFCLSID clsid) {
  IDispatch* objeto = nullptr;
  if (FAILED(CoCreateInstance(clsid, nullptr, CLSCTX_INPROC_SERVER, IID_IDispatch,
                              reinterpret_cast<void**>(&objeto)))) {
    Falha("objeto não criado");
  }
  return objeto;
}

DISPID Id(IDispatch* objeto, const wchar_t* nome) {
  DISPID id = DISPID_UNKNOWN;
  LPOLESTR nomes[] = {const_cast<LPOLESTR>(nome)};
  objeto->GetIDsOfNames(IID_NULL, nomes, 1, LOCALE_USER_DEFAULT, &id);
  return id;
}

// Calls a member; the arguments are given first to last and passed last to first, as IDispatch
// wants them; named ones carry their DISPIDs. The call frees the arguments it was given by value.
HRESULT Chama(IDispatch* objeto, const wchar_t* nome, WORD bandeiras, std::vector<VARIANT> args,
              VARIANT* resultado, std::vector<DISPID> nomeados = {}, UINT* erro = nullptr,
              EXCEPINFO* excecao = nullptr) {
  std::vector<VARIANT> invertidos(args.rbegin(), args.rend());
  DISPPARAMS parametros = {invertidos.data(), nomeados.data(), static_cast<UINT>(args.size()),
                           static_cast<UINT>(nomeados.size())};
  UINT argumento = 0;
  EXCEPINFO info = {};
  const HRESULT hr =
      objeto->Invoke(Id(objeto, nome), IID_NULL, LOCALE_USER_DEFAULT, bandeiras, &parametros,
                     resultado, excecao ? excecao : &info, erro ? erro : &argumento);
  if (!excecao) {
    SysFreeString(info.bstrSource);
    SysFreeString(info.bstrDescription);
  }
  for (VARIANT& argumento : invertidos) {
    if (!(V_VT(&argumento) & VT_BYREF)) VariantClear(&argumento);
  }
  return hr;
}

VARIANT Texto(const wchar_t* texto) {
  VARIANT v;
  V_VT(&v) = VT_BSTR;
  V_BSTR(&v) = SysAllocString(texto);
  return v;
}

VARIANT Inteiro(short valor) {
  VARIANT v;
  V_VT(&v) = VT_I2;
  V_I2(&v) = valor;
  return v;
}

VARIANT Referencia(VARTYPE tipo, void* alvo) {
  VARIANT v;
  V_VT(&v) = VT_BYREF | tipo;
  V_BYREF(&v) = alvo;
  return v;
}

VARIANT Omitido() {
  VARIANT v;
  V_VT(&v) = VT_ERROR;
  V_ERROR(&v) = DISP_E_PARAMNOTFOUND;
  return v;
}

std::wstring Bstr(const VARIANT& v) {
  return V_VT(&v) == VT_BSTR && V_BSTR(&v) ? V_BSTR(&v) : L"(não é texto)";
}

void Catalogo() {
  IDispatch* m = Cria(CLSID_clsQuorvMsg);
  VARIANT esperado, obtido;
  VariantInit(&esperado);
  VariantInit(&obtido);
  Chama(m, L"MensagemAdvertencia", DISPATCH_METHOD, {Inteiro(77)}, &esperado);
  // An Integer parameter given as a reference to a Long: coerced, and the Long stays a Long.
  LONG codigo = 77;
  Confere("código por referência a Long",
          SUCCEEDED(Chama(m, L"mensagemadvertencia", DISPATCH_METHOD | DISPATCH_PROPERTYGET,
                          {Referencia(VT_I4, &codigo)}, &obtido)) &&
              Bstr(obtido) == Bstr(esperado) && codigo == 77);
  Confere("texto do 77", Bstr(esperado) == L"Linha com tamanho Incorreto");
  VariantClear(&obtido);

  UINT erro = 99;
  Confere("DISP_E_TYPEMISMATCH", Chama(m, L"MensagemAdvertencia", DISPATCH_METHOD, {Texto(L"abc")},
                                       &obtido, {}, &erro) == DISP_E_TYPEMISMATCH);
  Confere("puArgErr do argumento recusado", erro == 0);
  IErrorInfo* info = nullptr;
  BSTR descricao = nullptr;
  Confere("IErrorInfo com a descrição",
          GetErrorInfo(0, &info) == S_OK && SUCCEEDED(info->GetDescription(&descricao)) &&
              std::wstring(descricao).find(L"nCodigoAdvertencia") != std::wstring::npos);
  SysFreeString(descricao);
  if (info) info->Release();
  ISupportErrorInfo* suporte = nullptr;
  Confere("ISupportErrorInfo",
          SUCCEEDED(m->QueryInterface(IID_ISupportErrorInfo, reinterpret_cast<void**>(&suporte))) &&
              suporte->InterfaceSupportsErrorInfo(IID__clsQuorvMsg) == S_OK &&
              suporte->InterfaceSupportsErrorInfo(IID__Validacao) == S_FALSE);
  if (suporte) suporte->Release();
  Confere("DISP_E_BADPARAMCOUNT", Chama(m, L"MensagemAdvertencia", DISPATCH_METHOD,
                                        {Inteiro(1), Inteiro(2)}, &obtido) == DISP_E_BADPARAMCOUNT);
  Confere("DISP_E_PARAMNOTOPTIONAL", Chama(m, L"MensagemAdvertencia", DISPATCH_METHOD, {},
                                           &obtido) == DISP_E_PARAMNOTOPTIONAL);
  Confere("DISP_E_OVERFLOW", Chama(m, L"MensagemAdvertencia", DISPATCH_METHOD, {Texto(L"99999")},
                                   &obtido) == DISP_E_OVERFLOW);
  DISPPARAMS vazio = {nullptr, nullptr, 0, 0};
  Confere("DISP_E_UNKNOWNINTERFACE",
          m->Invoke(1, IID_IDispatch, 0, DISPATCH_METHOD, &vazio, nullptr, nullptr, nullptr) ==
              DISP_E_UNKNOWNINTERFACE);
  Confere("DISP_E_MEMBERNOTFOUND", m->Invoke(77, IID_NULL, 0, DISPATCH_METHOD, &vazio, nullptr,
                                             nullptr, nullptr) == DISP_E_MEMBERNOTFOUND);
  ITypeInfo* tipo = nullptr;
  BSTR nome = nullptr;
  Confere("GetTypeInfo",
          SUCCEEDED(m->GetTypeInfo(0, 0, &tipo)) &&
              SUCCEEDED(tipo->GetDocumentation(MEMBERID_NIL, &nome, nullptr, nullptr, nullptr)) &&
              std::wstring(nome) == L"_clsQuorvMsg");
  SysFreeString(nome);
  if (tipo) tipo->Release();
  VariantClear(&esperado);
  m->Release();
}

void Validador(const wchar_t* arquivo, const wchar_t* trabalho) {
  IDispatch* v = Cria(CLSID_Validacao);
  // The remessa number as a typed reference to a BSTR, written back after the run.
  BSTR numero = SysAllocString(L"antes");
  VARIANT status;
  VariantInit(&status);
  const HRESULT hr = Chama(v, L"Valida_Dados", DISPATCH_METHOD,
                           {Texto(arquivo), Referencia(VT_BSTR, &numero), Texto(trabalho),
                            Omitido(), Omitido(), Omitido(), Omitido(), Omitido()},
                           &status);
  Confere("Valida_Dados com opcionais omitidos", SUCCEEDED(hr) && V_VT(&status) == VT_I2);
  Confere("numero escrito na referência", numero != nullptr && std::wstring(numero) == L"000001");
  SysFreeString(numero);

  // Names: the member's DISPID, then the positions of its parameters, in any case.
  DISPID ids[2] = {};
  LPOLESTR nomes[] = {const_cast<LPOLESTR>(L"VALIDA_DADOS"),
                      const_cast<LPOLESTR>(L"sdiretoriotrabalho")};
  Confere("GetIDsOfNames com parâmetro",
          SUCCEEDED(v->GetIDsOfNames(IID_NULL, nomes, 2, 0, ids)) && ids[0] == 1 && ids[1] == 2);

  // A ByRef Double that the member does not change stays as it was.
  double linha = 12.5;
  VARIANT resposta;
  VariantInit(&resposta);
  Chama(v, L"Gravar_Erro", DISPATCH_METHOD, {Texto(L"77"), Referencia(VT_R8, &linha)}, &resposta);
  Confere("Gravar_Erro fora de uma validação",
          V_VT(&resposta) == VT_BOOL && V_BOOL(&resposta) == VARIANT_FALSE && linha == 12.5);
  v->Release();
}

void Web() {
  IDispatch* w = Cria(CLSID_ValidacaoTarnWEB);
  // Named arguments, in another order than the parameters': the DISPIDs name the arguments as
  // IDispatch holds them, last given first (piSub, piMaxLen, psTexto).
  VARIANT posicional, nomeado;
  VariantInit(&posicional);
  VariantInit(&nomeado);
  const wchar_t* texto = L"aa bbbb cccc";
  Chama(w, L"BreakString", DISPATCH_METHOD, {Texto(texto), Inteiro(2), Inteiro(8)}, &posicional);
  Chama(w, L"BreakString", DISPATCH_METHOD, {Texto(texto), Inteiro(8), Inteiro(2)}, &nomeado,
        {1, 2, 0});
  Confere("argumentos nomeados", Bstr(posicional) == L"cccc" && Bstr(nomeado) == L"cccc");
  VariantClear(&posicional);
  VariantClear(&nomeado);
  UINT erro = 99;
  Confere("argumento nomeado desconhecido",
          Chama(w, L"BreakString", DISPATCH_METHOD, {Texto(texto), Inteiro(8)}, &nomeado, {7},
                &erro) == DISP_E_PARAMNOTFOUND &&
              erro == 0);

  // Write-only properties: DISPID_PROPERTYPUT works, reading is not a member.
  Confere("TipoArquivo escrito", SUCCEEDED(Chama(w, L"TipoArquivo", DISPATCH_PROPERTYPUT,
                                                 {Texto(L"ret")}, nullptr, {DISPID_PROPERTYPUT})));
  Confere("TipoArquivo não se lê",
          Chama(w, L"TipoArquivo", DISPATCH_PROPERTYGET, {}, &nomeado) == DISP_E_MEMBERNOTFOUND);
  w->Release();
}

void Fichas() {
  IDispatch* f = Cria(CLSID_ValidacaoFichaCadastral);
  Chama(f, L"iOrdem_Talao", DISPATCH_PROPERTYPUT, {Texto(L"12")}, nullptr, {DISPID_PROPERTYPUT});
  VARIANT lido;
  VariantInit(&lido);
  Chama(f, L"iOrdem_Talao", DISPATCH_PROPERTYGET, {}, &lido);
  Confere("propriedade Integer escrita como texto", V_VT(&lido) == VT_I2 && V_I2(&lido) == 12);
  f->Release();
}

void Utilitario(const wchar_t* arquivo) {
  IDispatch* u = Cria(CLSID_FileUtility);
  BSTR caminho = SysAllocString(L"C:\\dir\\file.txt");
  VARIANT_BOOL comExtensao = VARIANT_TRUE;
  VARIANT nome;
  VariantInit(&nome);
  Chama(u, L"GetFileName", DISPATCH_METHOD,
        {Referencia(VT_BSTR, &caminho), Referencia(VT_BOOL, &comExtensao)}, &nome);
  Confere("flag por referência", Bstr(nome) == L"file.txt" && comExtensao == VARIANT_TRUE &&
                                     std::wstring(caminho) == L"C:\\dir\\file.txt");
  VariantClear(&nome);
  Chama(u, L"GetFileName", DISPATCH_METHOD, {Referencia(VT_BSTR, &caminho), Omitido()}, &nome);
  Confere("flag omitida vale False", Bstr(nome) == L"file");
  VariantClear(&nome);
  SysFreeString(caminho);
  VARIANT existe;
  VariantInit(&existe);
  Chama(u, L"FileExists", DISPATCH_METHOD, {Texto(arquivo)}, &existe);
  Confere("FileExists", V_VT(&existe) == VT_BOOL && V_BOOL(&existe) == VARIANT_TRUE);
  u->Release();
}

void Leitor() {
  IDispatch* r = Cria(CLSID_clsQuorvAdvBDFichas);
  VARIANT contagem;
  VariantInit(&contagem);
  EXCEPINFO excecao = {};
  Confere(
      "RecordCount sem arquivo é uma exceção",
      Chama(r, L"RecordCount", DISPATCH_PROPERTYGET, {}, &contagem, {}, nullptr, &excecao) ==
              DISP_E_EXCEPTION &&
          excecao.scode == static_cast<SCODE>(0x800A005B) && excecao.bstrDescription &&
          std::wstring(excecao.bstrDescription) == L"Nenhum arquivo de advertências está aberto.");
  SysFreeString(excecao.bstrSource);
  SysFreeString(excecao.bstrDescription);
  r->Release();
}

}  // namespace

int wmain(int argc, wchar_t** argv) {
  if (argc != 3) {
    std::printf("uso: despacho ARQUIVO_DE_NOTAS DIRETORIO\n");
    return 100;
  }
  CoInitialize(nullptr);
  Catalogo();
  Validador(argv[1], argv[2]);
  Web();
  Fichas();
  Utilitario(argv[1]);
  Leitor();
  CoUninitialize();
  return cliente::Termina();
}
