// The component's registration: its classes (by CLSID and ProgID), its interfaces and its type
// library, machine-wide or for the current user only.
#ifndef QUORVVALIDA_SRC_COM_REGISTRO_HPP_
#define QUORVVALIDA_SRC_COM_REGISTRO_HPP_

#include <windows.h>

namespace quorv::com {

// Where the registration goes: HKLM\Software\Classes or HKCU\Software\Classes.
enum class Escopo { Maquina, Usuario };

// Writes every key the component needs: the seven classes (InprocServer32 with the apartment
// threading model, ProgID QuorvValida.<class>, TypeLib, Version), the interfaces and the type
// library, all read from the type library embedded in the DLL.
HRESULT Registra(Escopo escopo);

// Removes what Registra wrote and nothing else; keys another build of the component shares
// (the type library and the interfaces, when the other bitness is still registered) stay.
HRESULT Desregistra(Escopo escopo);

}  // namespace quorv::com

#endif  // QUORVVALIDA_SRC_COM_REGISTRO_HPP_
