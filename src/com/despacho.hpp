// Late binding as automation hosts use it: names to DISPIDs without regard to case, and calls
// whose arguments arrive as variants of any kind (by value, by reference to a typed variable, or
// by reference to a variant, which is how script hosts pass every ByRef argument). Each argument
// is coerced to its declared type as automation coerces (so "5" is a valid Integer and "abc" is a
// type mismatch), an omitted optional argument takes its declared default, and ByRef results are
// written back into the caller's variables.
#ifndef QUORVVALIDA_SRC_COM_DESPACHO_HPP_
#define QUORVVALIDA_SRC_COM_DESPACHO_HPP_

#include <windows.h>

#include <oaidl.h>

#include <vector>

namespace quorv::com {

// The members of one dual interface as its type description gives them, read once and kept for the
// life of the process.
class Despacho {
 public:
  // The description of the interface with that IID, built on first use; null when the type
  // library cannot give it.
  static const Despacho* DaInterface(REFIID iid);

  Despacho(const Despacho&) = delete;
  Despacho& operator=(const Despacho&) = delete;

  // IDispatch::GetTypeInfo: the dispatch side of the interface.
  HRESULT InfoDeTipo(ITypeInfo** info) const;

  // IDispatch::GetIDsOfNames: the member's DISPID, then its parameters' positions.
  HRESULT Nomes(LPOLESTR* nomes, UINT quantos, DISPID* ids) const;

  // IDispatch::Invoke on the object whose vtable is the interface's. Argument errors answer with
  // the matching DISP_E_* code (and the position in puArgErr) and leave an error description for
  // the caller; a member that fails answers DISP_E_EXCEPTION with its description.
  HRESULT Invoca(void* objeto, DISPID id, WORD bandeiras, DISPPARAMS* parametros,
                 VARIANT* resultado, EXCEPINFO* excecao, UINT* argumentoComErro) const;

 private:
  Despacho(REFIID iid, ITypeInfo* despacho, ITypeInfo* vtable);
  const FUNCDESC* Procura(DISPID id, WORD bandeiras) const;
  HRESULT ErroDeArgumento(HRESULT erro, const FUNCDESC& funcao, UINT parametro) const;

  IID iid_;
  ITypeInfo* despacho_;
  ITypeInfo* vtable_;
  std::vector<FUNCDESC*> funcoes_;
};

// Leaves an error description on the calling thread for the interface, as IErrorInfo carries it.
void DefineErro(REFIID iid, const wchar_t* descricao);

}  // namespace quorv::com

#endif  // QUORVVALIDA_SRC_COM_DESPACHO_HPP_
