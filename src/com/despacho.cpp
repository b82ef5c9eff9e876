#include "despacho.hpp"

#include <cstring>
#include <mutex>
#include <string>

#include "modulo.hpp"

namespace quorv::com {
namespace {

// Conversions at the boundary never depend on the machine's regional settings: "1.5" is one and
// a half on every machine.
constexpr LCID kLocalidade = LOCALE_INVARIANT;

// A variant that clears itself.
struct Variante {
  VARIANT v;
  Variante() { VariantInit(&v); }
  ~Variante() { VariantClear(&v); }
  Variante(const Variante&) = delete;
  Variante& operator=(const Variante&) = delete;
};

bool Iguais(const VARIANT& a, const VARIANT& b) {
  if (V_VT(&a) != V_VT(&b)) return false;
  switch (V_VT(&a)) {
    case VT_BSTR: {
      const UINT tamanho = SysStringLen(V_BSTR(&a));
      return tamanho == SysStringLen(V_BSTR(&b)) &&
             (tamanho == 0 || std::memcmp(V_BSTR(&a), V_BSTR(&b), tamanho * sizeof(OLECHAR)) == 0);
    }
    case VT_I2:
      return V_I2(&a) == V_I2(&b);
    case VT_I4:
      return V_I4(&a) == V_I4(&b);
    case VT_BOOL:
      return V_BOOL(&a) == V_BOOL(&b);
    case VT_R8:
      return std::memcmp(&V_R8(&a), &V_R8(&b), sizeof(double)) == 0;
    default:
      return false;
  }
}

// Writes a value into a caller's variable passed by reference to a typed location
// (VT_BYREF | VT_BSTR and the like), converted to that location's type. A variable whose type
// cannot take the value is left as it was.
void EscreveNaReferencia(VARIANTARG& destino, const VARIANT& valor) {
  const VARTYPE tipo = V_VT(&destino) & ~VT_BYREF;
  Variante convertido;
  if (FAILED(
          VariantChangeTypeEx(&convertido.v, const_cast<VARIANT*>(&valor), kLocalidade, 0, tipo))) {
    return;
  }
  void* alvo = V_BYREF(&destino);
  if (alvo == nullptr) return;
  switch (tipo) {
    case VT_BSTR:
      SysFreeString(*static_cast<BSTR*>(alvo));
      *static_cast<BSTR*>(alvo) = V_BSTR(&convertido.v);
      V_VT(&convertido.v) = VT_EMPTY;
      return;
    case VT_I1:
    case VT_UI1:
      std::memcpy(alvo, &V_UI1(&convertido.v), 1);
      return;
    case VT_I2:
    case VT_UI2:
    case VT_BOOL:
      std::memcpy(alvo, &V_I2(&convertido.v), 2);
      return;
    case VT_I4:
    case VT_UI4:
    case VT_INT:
    case VT_UINT:
    case VT_R4:
    case VT_ERROR:
      std::memcpy(alvo, &V_I4(&convertido.v), 4);
      return;
    case VT_R8:
    case VT_DATE:
    case VT_CY:
    case VT_I8:
    case VT_UI8:
      std::memcpy(alvo, &V_R8(&convertido.v), 8);
      return;
    default:
      return;
  }
}

std::wstring NomeDoMembro(ITypeInfo* info, MEMBERID id, UINT parametro,
                          std::wstring* nomeDoParametro) {
  BSTR nomes[32] = {};
  UINT quantos = 0;
  std::wstring membro;
  if (SUCCEEDED(info->GetNames(id, nomes, 32, &quantos))) {
    if (quantos > 0 && nomes[0] != nullptr) membro = nomes[0];
    if (nomeDoParametro != nullptr && parametro + 1 < quantos && nomes[parametro + 1] != nullptr) {
      *nomeDoParametro = nomes[parametro + 1];
    }
    for (UINT i = 0; i < quantos; ++i)
      SysFreeString(nomes[i]);
  }
  return membro;
}

// The interfaces described so far, kept for the life of the process and never destroyed: at
// process exit, releasing type descriptions from DllMain would call into oleaut32 under the
// loader lock.
std::mutex travaDasInterfaces;
std::vector<const Despacho*>& Interfaces() {
  static auto* interfaces = new std::vector<const Despacho*>();
  return *interfaces;
}

}  // namespace

void DefineErro(REFIID iid, const wchar_t* descricao) {
  ICreateErrorInfo* criacao = nullptr;
  if (FAILED(CreateErrorInfo(&criacao))) return;
  criacao->SetGUID(iid);
  criacao->SetSource(const_cast<LPOLESTR>(L"QuorvValida"));
  criacao->SetDescription(const_cast<LPOLESTR>(descricao));
  IErrorInfo* erro = nullptr;
  if (SUCCEEDED(criacao->QueryInterface(IID_IErrorInfo, reinterpret_cast<void**>(&erro)))) {
    SetErrorInfo(0, erro);
    erro->Release();
  }
  criacao->Release();
}

const Despacho* Despacho::DaInterface(REFIID iid) {
  std::lock_guard<std::mutex> trava(travaDasInterfaces);
  std::vector<const Despacho*>& interfaces = Interfaces();
  for (const Despacho* item : interfaces) {
    if (IsEqualIID(item->iid_, iid)) return item;
  }
  ITypeInfo* despacho = nullptr;
  if (FAILED(quorv::com::InfoDeTipo(iid, &despacho))) return nullptr;
  // A dual interface is described twice: as a dispinterface, and as the vtable its calls go
  // through.
  ITypeInfo* vtable = nullptr;
  HREFTYPE referencia = 0;
  if (FAILED(despacho->GetRefTypeOfImplType(static_cast<UINT>(-1), &referencia)) ||
      FAILED(despacho->GetRefTypeInfo(referencia, &vtable))) {
    despacho->Release();
    return nullptr;
  }
  interfaces.push_back(new Despacho(iid, despacho, vtable));
  return interfaces.back();
}

Despacho::Despacho(REFIID iid, ITypeInfo* despacho, ITypeInfo* vtable)
    : iid_(iid), despacho_(despacho), vtable_(vtable) {
  TYPEATTR* atributos = nullptr;
  if (FAILED(vtable_->GetTypeAttr(&atributos))) return;
  for (UINT i = 0; i < atributos->cFuncs; ++i) {
    FUNCDESC* funcao = nullptr;
    if (SUCCEEDED(vtable_->GetFuncDesc(i, &funcao))) funcoes_.push_back(funcao);
  }
  vtable_->ReleaseTypeAttr(atributos);
}

HRESULT Despacho::InfoDeTipo(ITypeInfo** info) const {
  if (info == nullptr) return E_POINTER;
  despacho_->AddRef();
  *info = despacho_;
  return S_OK;
}

HRESULT Despacho::Nomes(LPOLESTR* nomes, UINT quantos, DISPID* ids) const {
  // The type library's lookup ignores case, as VBScript and VBA callers need.
  return despacho_->GetIDsOfNames(nomes, quantos, ids);
}

const FUNCDESC* Despacho::Procura(DISPID id, WORD bandeiras) const {
  const bool escreve = (bandeiras & (DISPATCH_PROPERTYPUT | DISPATCH_PROPERTYPUTREF)) != 0;
  for (const FUNCDESC* funcao : funcoes_) {
    if (funcao->memid != id) continue;
    if (escreve ? funcao->invkind == INVOKE_PROPERTYPUT
                : (funcao->invkind & (INVOKE_FUNC | INVOKE_PROPERTYGET) & bandeiras) != 0) {
      return funcao;
    }
  }
  return nullptr;
}

HRESULT Despacho::ErroDeArgumento(HRESULT erro, const FUNCDESC& funcao, UINT parametro) const {
  std::wstring nomeDoParametro;
  const std::wstring membro = NomeDoMembro(despacho_, funcao.memid, parametro, &nomeDoParametro);
  std::wstring texto;
  switch (erro) {
    case DISP_E_TYPEMISMATCH:
      texto = L"Tipo incompatível no argumento " + nomeDoParametro + L" de " + membro + L".";
      break;
    case DISP_E_OVERFLOW:
      texto = L"O argumento " + nomeDoParametro + L" de " + membro +
              L" está fora da faixa do seu tipo.";
      break;
    case DISP_E_PARAMNOTOPTIONAL:
      texto = L"O argumento " + nomeDoParametro + L" de " + membro + L" é obrigatório.";
      break;
    case DISP_E_PARAMNOTFOUND:
      texto = L"Argumento nomeado desconhecido em " + membro + L".";
      break;
    default:
      texto = L"Número de argumentos incorreto em " + membro + L".";
      break;
  }
  DefineErro(iid_, texto.c_str());
  return erro;
}

HRESULT Despacho::Invoca(void* objeto, DISPID id, WORD bandeiras, DISPPARAMS* parametros,
                         VARIANT* resultado, EXCEPINFO* excecao, UINT* argumentoComErro) const {
  if (parametros == nullptr || (parametros->cArgs > 0 && parametros->rgvarg == nullptr) ||
      (parametros->cNamedArgs > 0 && parametros->rgdispidNamedArgs == nullptr)) {
    return E_INVALIDARG;
  }
  const FUNCDESC* funcao = Procura(id, bandeiras);
  if (funcao == nullptr) {
    DefineErro(iid_, L"O objeto não tem esse membro.");
    return DISP_E_MEMBERNOTFOUND;
  }

  const UINT formais = static_cast<UINT>(funcao->cParams);
  const bool temRetorno =
      formais > 0 &&
      (funcao->lprgelemdescParam[formais - 1].paramdesc.wParamFlags & PARAMFLAG_FRETVAL) != 0;
  const UINT entradas = temRetorno ? formais - 1 : formais;
  const UINT total = parametros->cArgs;
  const UINT nomeados = parametros->cNamedArgs;
  if (nomeados > total) return E_INVALIDARG;
  const UINT posicionais = total - nomeados;
  if (posicionais > entradas) return ErroDeArgumento(DISP_E_BADPARAMCOUNT, *funcao, 0);

  // Which of the caller's arguments goes to each parameter, and its place in rgvarg (arguments
  // come last to first; named ones first).
  std::vector<VARIANTARG*> fontes(entradas, nullptr);
  std::vector<UINT> posicoes(entradas, 0);
  for (UINT j = 0; j < posicionais; ++j) {
    fontes[j] = &parametros->rgvarg[total - 1 - j];
    posicoes[j] = total - 1 - j;
  }
  for (UINT k = 0; k < nomeados; ++k) {
    const DISPID nome = parametros->rgdispidNamedArgs[k];
    const bool valorDaPropriedade =
        nome == DISPID_PROPERTYPUT && funcao->invkind == INVOKE_PROPERTYPUT;
    const UINT formal = valorDaPropriedade ? entradas - 1 : static_cast<UINT>(nome);
    if ((!valorDaPropriedade && nome < 0) || formal >= entradas || fontes[formal] != nullptr) {
      if (argumentoComErro != nullptr) *argumentoComErro = k;
      return ErroDeArgumento(DISP_E_PARAMNOTFOUND, *funcao, 0);
    }
    fontes[formal] = &parametros->rgvarg[k];
    posicoes[formal] = k;
  }

  // Each argument coerced to its declared type, into storage of the call's own.
  std::vector<Variante> valores(formais);
  std::vector<Variante> antes(entradas);
  std::vector<VARIANTARG> argumentos(formais);
  std::vector<VARIANTARG*> ponteiros(formais);
  std::vector<VARTYPE> tipos(formais);
  std::vector<bool> referencias(formais);
  for (UINT i = 0; i < formais; ++i) {
    const ELEMDESC& descricao = funcao->lprgelemdescParam[i];
    const bool porReferencia = descricao.tdesc.vt == VT_PTR;
    referencias[i] = porReferencia;
    const VARTYPE tipo = porReferencia ? descricao.tdesc.lptdesc->vt : descricao.tdesc.vt;
    VARIANT& valor = valores[i].v;
    if (i < entradas) {
      const VARIANT* origem = fontes[i];
      if (origem != nullptr && V_VT(origem) == (VT_VARIANT | VT_BYREF)) {
        origem = V_VARIANTREF(origem);
      }
      const bool omitido = origem == nullptr ||
                           (V_VT(origem) == VT_ERROR && V_ERROR(origem) == DISP_E_PARAMNOTFOUND);
      if (omitido) {
        if ((descricao.paramdesc.wParamFlags & PARAMFLAG_FHASDEFAULT) == 0 ||
            descricao.paramdesc.pparamdescex == nullptr) {
          return ErroDeArgumento(DISP_E_PARAMNOTOPTIONAL, *funcao, i);
        }
        origem = &descricao.paramdesc.pparamdescex->varDefaultValue;
      }
      Variante direto;
      HRESULT hr = VariantCopyInd(&direto.v, const_cast<VARIANT*>(origem));
      if (SUCCEEDED(hr)) hr = VariantChangeTypeEx(&valor, &direto.v, kLocalidade, 0, tipo);
      if (FAILED(hr)) {
        if (argumentoComErro != nullptr) *argumentoComErro = posicoes[i];
        return ErroDeArgumento(hr == DISP_E_OVERFLOW ? DISP_E_OVERFLOW : DISP_E_TYPEMISMATCH,
                               *funcao, i);
      }
      VariantCopy(&antes[i].v, &valor);
    } else {
      std::memset(&valor, 0, sizeof valor);
      V_VT(&valor) = tipo;
    }
    if (porReferencia) {
      V_VT(&argumentos[i]) = VT_BYREF | tipo;
      V_BYREF(&argumentos[i]) = &V_UI1(&valor);
    } else {
      argumentos[i] = valor;
    }
    tipos[i] = V_VT(&argumentos[i]);
    ponteiros[i] = &argumentos[i];
  }

  Variante retornoDaChamada;
  HRESULT hr = DispCallFunc(objeto, funcao->oVft, funcao->callconv, VT_I4, formais, tipos.data(),
                            ponteiros.data(), &retornoDaChamada.v);
  if (SUCCEEDED(hr)) hr = V_I4(&retornoDaChamada.v);
  if (FAILED(hr)) {
    if (excecao == nullptr) return hr;
    std::memset(excecao, 0, sizeof *excecao);
    excecao->scode = hr;
    IErrorInfo* erro = nullptr;
    if (GetErrorInfo(0, &erro) == S_OK) {
      erro->GetSource(&excecao->bstrSource);
      erro->GetDescription(&excecao->bstrDescription);
      erro->Release();
    }
    return DISP_E_EXCEPTION;
  }

  // A ByRef parameter that the member changed goes back into the caller's variable; one it left
  // as it was does not touch the variable, whatever its type.
  for (UINT i = 0; i < entradas; ++i) {
    VARIANTARG* fonte = fontes[i];
    if (!referencias[i] || fonte == nullptr || !V_ISBYREF(fonte) ||
        Iguais(antes[i].v, valores[i].v)) {
      continue;
    }
    if (V_VT(fonte) == (VT_VARIANT | VT_BYREF)) {
      VARIANT* alvo = V_VARIANTREF(fonte);
      VariantClear(alvo);
      VariantCopy(alvo, &valores[i].v);
    } else {
      EscreveNaReferencia(*fonte, valores[i].v);
    }
  }
  if (resultado != nullptr) {
    VariantInit(resultado);
    if (temRetorno) {
      *resultado = valores[formais - 1].v;
      V_VT(&valores[formais - 1].v) = VT_EMPTY;
    }
  }
  return S_OK;
}

}  // namespace quorv::com
