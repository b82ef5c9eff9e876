// Reads the registered QuorvValida type library back through ITypeLib/ITypeInfo, as every
// late-binding host and every compiler that imports it does, and compares it with the component's
// contract written below as data: the library, every class, interface and dispinterface, each
// member in order with its kind, DISPID, parameters (name, type, direction, optional default),
// result and flags, and that clsQuorvAdvBD is neither described nor creatable.
// The identifiers are pinned here: a host compiled against one version must work with the next.
// Prints one line per difference and ends with "FIM"; the exit code is the number of differences.
#include <windows.h>

#include <oleauto.h>

#include <cstdio>
#include <iterator>
#include <string>
#include <vector>

namespace {

int falhas = 0;

void Falha(const std::wstring& texto) {
  ++falhas;
  std::wprintf(L"FALHA: %ls\n", texto.c_str());
}

GUID Guid(const wchar_t* texto) {
  GUID guid = {};
  CLSIDFromString(texto, &guid);
  return guid;
}

constexpr USHORT kIn = PARAMFLAG_FIN;
constexpr USHORT kInOut = PARAMFLAG_FIN | PARAMFLAG_FOUT;
constexpr USHORT kOpcional = PARAMFLAG_FOPT | PARAMFLAG_FHASDEFAULT;
constexpr USHORT kRetorno = PARAMFLAG_FOUT | PARAMFLAG_FRETVAL;

// A parameter: name, type, passed by reference, flags, default value (as VBScript would write it).
struct Parametro {
  const wchar_t* nome;
  VARTYPE tipo;
  bool referencia;
  USHORT bandeiras;
  VARTYPE tipoDoPadrao;
  const wchar_t* padrao;
};

Parametro Em(const wchar_t* nome, VARTYPE tipo) {
  return {nome, tipo, false, kIn, VT_EMPTY, nullptr};
}
Parametro EmSai(const wchar_t* nome, VARTYPE tipo) {
  return {nome, tipo, true, kInOut, VT_EMPTY, nullptr};
}
Parametro Opcional(const wchar_t* nome, VARTYPE tipo, const wchar_t* padrao) {
  return {nome, tipo, false, kIn | kOpcional, tipo, padrao};
}
Parametro OpcionalPorReferencia(const wchar_t* nome, VARTYPE tipo, const wchar_t* padrao) {
  return {nome, tipo, true, kInOut | kOpcional, tipo, padrao};
}

// A member: name, kind, DISPID, parameters, type of its result (VT_EMPTY: none).
struct Membro {
  const wchar_t* nome;
  INVOKEKIND tipo;
  MEMBERID id;
  std::vector<Parametro> parametros;
  VARTYPE resultado;
};

Membro Metodo(const wchar_t* nome, MEMBERID id, std::vector<Parametro> parametros,
              VARTYPE resultado = VT_EMPTY) {
  return {nome, INVOKE_FUNC, id, std::move(parametros), resultado};
}
Membro Le(const wchar_t* nome, MEMBERID id, VARTYPE tipo) {
  return {nome, INVOKE_PROPERTYGET, id, {}, tipo};
}
Membro Escreve(const wchar_t* nome, MEMBERID id, VARTYPE tipo) {
  return {nome, INVOKE_PROPERTYPUT, id, {Em(nullptr, tipo)}, VT_EMPTY};
}

struct Interface {
  const wchar_t* nome;
  const wchar_t* iid;
  bool eventos;
  std::vector<Membro> membros;
};

struct Classe {
  const wchar_t* nome;
  const wchar_t* clsid;
  const wchar_t* padrao;
  const wchar_t* fonte;
};

std::vector<Parametro> ArgumentosDaValidacao() {
  return {Em(L"sArquivoRemessa", VT_BSTR),
          EmSai(L"nNumeroRemessa", VT_BSTR),
          Em(L"sDiretorioTrabalho", VT_BSTR),
          Opcional(L"nChaveRemessa", VT_R8, L"0"),
          Opcional(L"nChaveProcessamento", VT_R8, L"0"),
          Opcional(L"sOrigemChamada", VT_BSTR, L""),
          Opcional(L"sNomeServidor", VT_BSTR, L""),
          Opcional(L"sCaracterSeparador", VT_BSTR, L"#")};
}

std::vector<Parametro> ArgumentosDaWeb(bool comTipo) {
  std::vector<Parametro> argumentos = {Em(L"sFilePath", VT_BSTR), Em(L"sFileRetorno", VT_BSTR),
                                       Em(L"sDirTrabalho", VT_BSTR),
                                       EmSai(L"nNumeroRemessa", VT_BSTR)};
  if (comTipo) argumentos.push_back(Em(L"sTipoDoc", VT_BSTR));
  return argumentos;
}

std::vector<Membro> Propriedade(const wchar_t* nome, MEMBERID id, VARTYPE tipo) {
  return {Le(nome, id, tipo), Escreve(nome, id, tipo)};
}

std::vector<Interface> Interfaces() {
  std::vector<Membro> fichas;
  const std::pair<const wchar_t*, VARTYPE> campos[] = {
      {L"sNumeroRemessaRef", VT_BSTR}, {L"sTipo_Solicitacao", VT_BSTR},
      {L"sNro_Solicitacao", VT_BSTR},  {L"iOrdem_Faturamento", VT_I2},
      {L"iOrdem_Talao", VT_I2},        {L"Dt_Inicio_Atividade", VT_BSTR},
      {L"Dt_Fim_Atividade", VT_BSTR},  {L"contSolicitacao", VT_I4},
      {L"contInscricao", VT_I4},       {L"bTem_Erro_Grave", VT_BOOL}};
  MEMBERID id = 1;
  for (const auto& campo : campos) {
    for (Membro& membro : Propriedade(campo.first, id, campo.second))
      fichas.push_back(membro);
    ++id;
  }
  fichas.push_back(Metodo(L"Valida_Fichas", 11, ArgumentosDaValidacao(), VT_I2));
  fichas.push_back(
      Metodo(L"Procedimentos_Finais_Fichas", 12, {EmSai(L"sDIRETORIOORDADV", VT_BSTR)}, VT_BOOL));
  fichas.push_back(Metodo(L"Gravar_Erro_Ficha", 13,
                          {Em(L"lCodErro", VT_I4), OpcionalPorReferencia(L"dLINHA", VT_R8, L"0")},
                          VT_BOOL));
  fichas.push_back(Metodo(L"Gravar_Erro_FichaTR110", 14,
                          {Em(L"lCodErro", VT_I4), OpcionalPorReferencia(L"dLINHA", VT_R8, L"0")},
                          VT_BOOL));

  const Parametro caminho = EmSai(L"sArquivoRemessa", VT_BSTR);
  return {
      {L"_Validacao",
       L"{2E62BEEF-F4E4-44BE-B90A-3D050B88187E}",
       false,
       {Metodo(L"Valida_Dados", 1, ArgumentosDaValidacao(), VT_I2),
        Metodo(L"Gravar_Erro", 2,
               {Em(L"lCodErro", VT_I4), OpcionalPorReferencia(L"dLINHA", VT_R8, L"0")}, VT_BOOL)}},
      {L"__Validacao",
       L"{D6DA228E-BD31-4C28-9FA1-79FA8B8C03B6}",
       true,
       {Metodo(L"Progress", 1, {EmSai(L"dPorcentagem", VT_R8)})}},
      {L"_ValidacaoFichaCadastral", L"{F7AFA9BC-578C-4AFB-B010-2245E966B30F}", false, fichas},
      {L"__ValidacaoFichaCadastral",
       L"{565FAB7C-142F-47B1-AE16-8072768B0D96}",
       true,
       {Metodo(L"FichaProgress", 1, {EmSai(L"dPorcentagem", VT_R8)})}},
      {L"_ValidacaoTarnWEB",
       L"{959AE425-9747-47FC-A92C-A66DD87B3F32}",
       false,
       {Metodo(L"Valida_Dados_Tarnweb", 1, ArgumentosDaWeb(false), VT_BOOL),
        Metodo(L"BreakString", 2,
               {Em(L"psTexto", VT_BSTR), Em(L"piSub", VT_I2), Em(L"piMaxLen", VT_I2)}, VT_BSTR),
        Metodo(L"Valida_TIPO", 3, ArgumentosDaWeb(true), VT_BOOL),
        Metodo(L"Valida_Dados_Ficha_Cadastral", 4, ArgumentosDaWeb(false), VT_BOOL),
        Escreve(L"TipoArquivo", 5, VT_BSTR), Escreve(L"ProgramaChamador", 6, VT_BSTR)}},
      {L"_FileUtility",
       L"{3A8BCC10-5F8E-4B81-8AF4-7D367B09FEE3}",
       false,
       {Metodo(L"GetDrive", 1, {caminho}, VT_BSTR),
        Metodo(L"GetFileName", 2,
               {caminho, OpcionalPorReferencia(L"bWithExtension", VT_BOOL, L"False")}, VT_BSTR),
        Metodo(L"GetFileExtension", 3, {caminho}, VT_BSTR),
        Metodo(L"GetPath", 4, {caminho, OpcionalPorReferencia(L"bWithDevice", VT_BOOL, L"False")},
               VT_BSTR),
        Metodo(L"FileExists", 5, {caminho}, VT_BOOL)}},
      {L"_clsQuorvMsg",
       L"{6A3D7AEA-7C54-48DA-AACB-BF73640B4C9A}",
       false,
       {Metodo(L"MensagemAdvertencia", 1, {EmSai(L"nCodigoAdvertencia", VT_I2)}, VT_BSTR)}},
      {L"_clsQuorvMsgFichas",
       L"{0CF6D535-4FB3-4C97-8949-B65853017299}",
       false,
       {Metodo(L"MensagemAdvertenciaFichas", 1, {EmSai(L"nCodigoAdvertencia", VT_I2)}, VT_BSTR)}},
      {L"_clsQuorvAdvBDFichas",
       L"{DD09063B-A003-4AA8-8617-5A910785930A}",
       false,
       {Metodo(L"OpenStream", 1, {EmSai(L"psFilePath", VT_BSTR)}), Metodo(L"CloseStream", 2, {}),
        Metodo(L"MoveNext", 3, {}), Le(L"EndOfStream", 4, VT_BOOL), Le(L"TR", 5, VT_BSTR),
        Le(L"Nota", 6, VT_BSTR), Le(L"LINHA", 7, VT_I4), Le(L"Descricao", 8, VT_BSTR),
        Le(L"TotalRecords", 9, VT_I4), Le(L"RecordCount", 10, VT_I4)}},
  };
}

const Classe kClasses[] = {
    {L"Validacao", L"{8B425DEE-240C-490A-BE81-874BE4EBCA22}", L"_Validacao", L"__Validacao"},
    {L"ValidacaoFichaCadastral", L"{99E96EE9-5F28-42E0-96B6-3FEE8ECBBA86}",
     L"_ValidacaoFichaCadastral", L"__ValidacaoFichaCadastral"},
    {L"ValidacaoTarnWEB", L"{AE8841E4-9960-4C35-8EC7-9B2EA6795E9E}", L"_ValidacaoTarnWEB", nullptr},
    {L"FileUtility", L"{D2C74E14-0392-4C07-961B-2263A71EE73B}", L"_FileUtility", nullptr},
    {L"clsQuorvMsg", L"{A72C3B4E-9DE5-42DA-B5CC-9030731C396A}", L"_clsQuorvMsg", nullptr},
    {L"clsQuorvMsgFichas", L"{4DC01424-4C5C-4B8D-B5B6-17171917B5FC}", L"_clsQuorvMsgFichas",
     nullptr},
    {L"clsQuorvAdvBDFichas", L"{4C6C656E-64B1-4C09-AF23-C73CEDB9DF90}", L"_clsQuorvAdvBDFichas",
     nullptr},
};

constexpr const wchar_t* kBiblioteca = L"{5AD026E3-8C80-4DC7-8310-05A64E75EF1A}";

std::wstring Nome(ITypeInfo* info, MEMBERID id = MEMBERID_NIL) {
  BSTR nome = nullptr;
  std::wstring texto;
  if (SUCCEEDED(info->GetDocumentation(id, &nome, nullptr, nullptr, nullptr)) && nome) {
    texto = nome;
  }
  SysFreeString(nome);
  return texto;
}

// The default value as VBScript would write it, or "?" when it has another type than expected.
std::wstring Padrao(const PARAMDESC& descricao, VARTYPE esperado) {
  if (descricao.pparamdescex == nullptr) return L"(nenhum)";
  const VARIANT& valor = descricao.pparamdescex->varDefaultValue;
  if (V_VT(&valor) != esperado) return L"(tipo " + std::to_wstring(V_VT(&valor)) + L")";
  switch (esperado) {
    case VT_BSTR:
      return V_BSTR(&valor) == nullptr ? L"" : V_BSTR(&valor);
    case VT_R8:
      return V_R8(&valor) == 0.0 ? L"0" : L"(não zero)";
    case VT_BOOL:
      return V_BOOL(&valor) == VARIANT_FALSE ? L"False" : L"True";
    default:
      return L"?";
  }
}

void VerificaMembro(ITypeInfo* info, const std::wstring& onde, UINT indice, const Membro& membro,
                    bool eventos) {
  FUNCDESC* funcao = nullptr;
  if (FAILED(info->GetFuncDesc(indice, &funcao))) {
    Falha(onde + L": membro " + std::to_wstring(indice) + L" ilegível");
    return;
  }
  const std::wstring aqui = onde + L"." + membro.nome;
  const std::wstring nome = Nome(info, funcao->memid);
  if (nome != membro.nome) Falha(onde + L": membro " + std::to_wstring(indice) + L" é " + nome);
  if (funcao->invkind != membro.tipo) Falha(aqui + L": tipo de membro errado");
  if (funcao->memid != membro.id) Falha(aqui + L": DISPID " + std::to_wstring(funcao->memid));
  if (funcao->funckind != (eventos ? FUNC_DISPATCH : FUNC_PUREVIRTUAL)) {
    Falha(aqui + L": forma de chamada errada");
  }
  // The vtable side of a dual interface returns HRESULT; the result is the retval parameter.
  const UINT retorno = membro.resultado == VT_EMPTY ? 0 : 1;
  if (!eventos && funcao->elemdescFunc.tdesc.vt != VT_HRESULT) Falha(aqui + L": não dá HRESULT");
  if (eventos && funcao->elemdescFunc.tdesc.vt != VT_VOID) Falha(aqui + L": evento com retorno");
  const UINT esperados = static_cast<UINT>(membro.parametros.size()) + retorno;
  if (static_cast<UINT>(funcao->cParams) != esperados) {
    Falha(aqui + L": " + std::to_wstring(funcao->cParams) + L" parâmetros");
  } else {
    BSTR nomes[16] = {};
    UINT quantos = 0;
    info->GetNames(funcao->memid, nomes, 16, &quantos);
    int opcionais = 0;
    for (UINT i = 0; i < esperados; ++i) {
      const ELEMDESC& elemento = funcao->lprgelemdescParam[i];
      const bool referencia = elemento.tdesc.vt == VT_PTR;
      const VARTYPE tipo = referencia ? elemento.tdesc.lptdesc->vt : elemento.tdesc.vt;
      const USHORT bandeiras = elemento.paramdesc.wParamFlags;
      if (i == membro.parametros.size()) {
        if (tipo != membro.resultado || !referencia || bandeiras != kRetorno) {
          Falha(aqui + L": resultado errado");
        }
        continue;
      }
      const Parametro& esperado = membro.parametros[i];
      const std::wstring p = aqui + L"(" + std::to_wstring(i + 1) + L")";
      // A property's value has no name in the type library.
      if (esperado.nome != nullptr && (i + 1 >= quantos || nomes[i + 1] == nullptr ||
                                       esperado.nome != std::wstring(nomes[i + 1]))) {
        Falha(p + L": nome errado");
      }
      if (tipo != esperado.tipo) Falha(p + L": tipo " + std::to_wstring(tipo));
      if (referencia != esperado.referencia) Falha(p + L": passagem errada");
      if (bandeiras != esperado.bandeiras) Falha(p + L": bandeiras " + std::to_wstring(bandeiras));
      if (esperado.padrao != nullptr) {
        ++opcionais;
        const std::wstring padrao = Padrao(elemento.paramdesc, esperado.tipoDoPadrao);
        if (padrao != esperado.padrao) Falha(p + L": padrão " + padrao);
      }
    }
    if (funcao->cParamsOpt != 0 && funcao->cParamsOpt != opcionais) {
      Falha(aqui + L": cParamsOpt " + std::to_wstring(funcao->cParamsOpt));
    }
    for (UINT i = 0; i < quantos; ++i)
      SysFreeString(nomes[i]);
  }
  info->ReleaseFuncDesc(funcao);
}

void VerificaInterface(ITypeLib* biblioteca, const Interface& esperada) {
  ITypeInfo* info = nullptr;
  if (FAILED(biblioteca->GetTypeInfoOfGuid(Guid(esperada.iid), &info))) {
    Falha(std::wstring(esperada.nome) + L": ausente");
    return;
  }
  if (Nome(info) != esperada.nome) Falha(std::wstring(esperada.nome) + L": nome " + Nome(info));
  TYPEATTR* atributos = nullptr;
  info->GetTypeAttr(&atributos);
  // Automation reports "automation-compatible" on the vtable side of a dual interface only.
  constexpr WORD kDual =
      TYPEFLAG_FHIDDEN | TYPEFLAG_FDUAL | TYPEFLAG_FNONEXTENSIBLE | TYPEFLAG_FDISPATCHABLE;
  const WORD esperadas = esperada.eventos ? TYPEFLAG_FHIDDEN | TYPEFLAG_FDISPATCHABLE : kDual;
  if (atributos->typekind != TKIND_DISPATCH)
    Falha(std::wstring(esperada.nome) + L": não é despacho");
  if (atributos->wTypeFlags != esperadas) {
    Falha(std::wstring(esperada.nome) + L": bandeiras " + std::to_wstring(atributos->wTypeFlags));
  }
  info->ReleaseTypeAttr(atributos);

  // Dual interfaces are checked on their vtable side, where the parameters and results are
  // typed; dispinterfaces as they are.
  ITypeInfo* membros = info;
  if (!esperada.eventos) {
    HREFTYPE referencia = 0;
    membros = nullptr;
    if (FAILED(info->GetRefTypeOfImplType(static_cast<UINT>(-1), &referencia)) ||
        FAILED(info->GetRefTypeInfo(referencia, &membros))) {
      Falha(std::wstring(esperada.nome) + L": sem a face de vtable");
      info->Release();
      return;
    }
  }
  TYPEATTR* tipo = nullptr;
  membros->GetTypeAttr(&tipo);
  if (!esperada.eventos && (tipo->typekind != TKIND_INTERFACE ||
                            tipo->wTypeFlags != (kDual | TYPEFLAG_FOLEAUTOMATION))) {
    Falha(std::wstring(esperada.nome) + L": face de vtable com bandeiras " +
          std::to_wstring(tipo->wTypeFlags));
  }
  if (tipo->cFuncs != esperada.membros.size()) {
    Falha(std::wstring(esperada.nome) + L": " + std::to_wstring(tipo->cFuncs) + L" membros");
  }
  const UINT quantos =
      tipo->cFuncs < esperada.membros.size() ? tipo->cFuncs : esperada.membros.size();
  for (UINT i = 0; i < quantos; ++i) {
    VerificaMembro(membros, esperada.nome, i, esperada.membros[i], esperada.eventos);
  }
  membros->ReleaseTypeAttr(tipo);
  if (membros != info) membros->Release();
  info->Release();
}

void VerificaClasse(ITypeLib* biblioteca, const Classe& esperada) {
  ITypeInfo* info = nullptr;
  const std::wstring nome = esperada.nome;
  if (FAILED(biblioteca->GetTypeInfoOfGuid(Guid(esperada.clsid), &info))) {
    Falha(nome + L": classe ausente");
    return;
  }
  if (Nome(info) != nome) Falha(nome + L": nome " + Nome(info));
  TYPEATTR* atributos = nullptr;
  info->GetTypeAttr(&atributos);
  if (atributos->typekind != TKIND_COCLASS) Falha(nome + L": não é classe");
  if ((atributos->wTypeFlags & TYPEFLAG_FCANCREATE) == 0) Falha(nome + L": não criável");
  const UINT implementadas = atributos->cImplTypes;
  if (implementadas != (esperada.fonte ? 2u : 1u)) Falha(nome + L": interfaces demais");
  for (UINT i = 0; i < implementadas; ++i) {
    INT bandeiras = 0;
    HREFTYPE referencia = 0;
    ITypeInfo* implementada = nullptr;
    info->GetImplTypeFlags(i, &bandeiras);
    info->GetRefTypeOfImplType(i, &referencia);
    info->GetRefTypeInfo(referencia, &implementada);
    const std::wstring qual = implementada ? Nome(implementada) : L"?";
    const bool fonte = (bandeiras & IMPLTYPEFLAG_FSOURCE) != 0;
    const wchar_t* esperado = fonte ? esperada.fonte : esperada.padrao;
    if ((bandeiras & IMPLTYPEFLAG_FDEFAULT) == 0 || esperado == nullptr || qual != esperado) {
      Falha(nome + L": interface " + qual);
    }
    if (implementada) implementada->Release();
  }
  info->ReleaseTypeAttr(atributos);
  info->Release();

  CLSID clsid = {};
  if (FAILED(CLSIDFromProgID((L"QuorvValida." + nome).c_str(), &clsid)) ||
      !IsEqualCLSID(clsid, Guid(esperada.clsid))) {
    Falha(nome + L": ProgID não registrado");
  }
}

}  // namespace

int wmain() {
  CoInitialize(nullptr);
  ITypeLib* biblioteca = nullptr;
  if (FAILED(LoadRegTypeLib(Guid(kBiblioteca), 1, 0, LOCALE_NEUTRAL, &biblioteca))) {
    Falha(L"a biblioteca de tipos não está registrada");
  } else {
    TLIBATTR* atributos = nullptr;
    biblioteca->GetLibAttr(&atributos);
    if (atributos->wMajorVerNum != 1 || atributos->wMinorVerNum != 0)
      Falha(L"versão da biblioteca");
    biblioteca->ReleaseTLibAttr(atributos);
    BSTR nome = nullptr;
    BSTR ajuda = nullptr;
    biblioteca->GetDocumentation(-1, &nome, &ajuda, nullptr, nullptr);
    if (nome == nullptr || std::wstring(nome) != L"QuorvValida") Falha(L"nome da biblioteca");
    if (ajuda == nullptr || std::wstring(ajuda) != L"QuorvValida") Falha(L"texto de ajuda");
    SysFreeString(nome);
    SysFreeString(ajuda);

    const std::vector<Interface> interfaces = Interfaces();
    for (const Interface& item : interfaces)
      VerificaInterface(biblioteca, item);
    for (const Classe& classe : kClasses)
      VerificaClasse(biblioteca, classe);
    const UINT esperados = static_cast<UINT>(interfaces.size()) + std::size(kClasses);
    if (biblioteca->GetTypeInfoCount() != esperados) {
      Falha(L"a biblioteca descreve " + std::to_wstring(biblioteca->GetTypeInfoCount()) +
            L" tipos");
    }
    // The invoice reader is private to the component.
    for (const wchar_t* privado : {L"clsQuorvAdvBD", L"_clsQuorvAdvBD"}) {
      BOOL achou = FALSE;
      biblioteca->IsName(const_cast<LPOLESTR>(privado), 0, &achou);
      if (achou) Falha(std::wstring(privado) + L" está na biblioteca de tipos");
    }
    biblioteca->Release();
  }
  CLSID privado = {};
  if (SUCCEEDED(CLSIDFromProgID(L"QuorvValida.clsQuorvAdvBD", &privado))) {
    Falha(L"clsQuorvAdvBD está registrado");
  }
  std::wprintf(L"%d diferenças\nFIM\n", falhas);
  CoUninitialize();
  return falhas;
}
