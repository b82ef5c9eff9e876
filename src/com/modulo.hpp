// The state that a COM in-process server keeps for its whole life in a process: its own module
// handle, the counts that DllCanUnloadNow answers from, and the type library it describes itself
// with. COM's contract with a DLL server makes these per-process by nature.
#ifndef QUORVVALIDA_SRC_COM_MODULO_HPP_
#define QUORVVALIDA_SRC_COM_MODULO_HPP_

#include <windows.h>

#include <oaidl.h>

#include <string>

namespace quorv::com {

// The server's own DLL, as DllMain received it.
HMODULE Modulo();
void DefineModulo(HMODULE modulo);

// The full path of the server's DLL.
std::wstring CaminhoDoModulo();

// Objects alive and locks held (IClassFactory::LockServer); the server may be unloaded when both
// are zero.
void ObjetoCriado();
void ObjetoDestruido();
void TravaServidor(bool travar);
bool PodeDescarregar();

// Once per process, when a host first asks for a class: keeps the DLL in memory for the rest of
// the process (it never unloads once loaded, and neither does the state-registration library it
// loads), and takes the state-registration library DllInscE32.dll from the DLL's own folder when
// it is there; otherwise the system's search for it applies at the first check.
void Prepara();

// The type library embedded in the DLL (resource 1). The caller releases it.
HRESULT BibliotecaDeTipos(ITypeLib** biblioteca);

// The type description of a class, an interface or a dispinterface of the library.
HRESULT InfoDeTipo(REFGUID guid, ITypeInfo** info);

}  // namespace quorv::com

#endif  // QUORVVALIDA_SRC_COM_MODULO_HPP_
