// What the compiled clients of the component's tests share: the differences they count and print,
// the closing lines the harness looks for, text conversions, and the arguments of a validation
// call with the optional ones at their defaults.
#ifndef QUORVVALIDA_TESTS_COM_CLIENTE_HPP_
#define QUORVVALIDA_TESTS_COM_CLIENTE_HPP_

#include <windows.h>

#include <oleauto.h>

#include <cstdio>
#include <string>
#include <string_view>

namespace cliente {

// The differences found so far.
inline int falhas = 0;

// Counts a difference and prints it.
inline void Falha(const std::string& texto) {
  ++falhas;
  std::printf("FALHA: %s\n", texto.c_str());
}

// Prints the count and FIM, which only a client that ran to its end prints; answers the count,
// the client's exit code.
inline int Termina() {
  std::printf("%d diferenças\nFIM\n", falhas);
  return falhas;
}

// The UTF-8 of a wide text.
inline std::string Utf8(std::wstring_view texto) {
  const int tamanho = static_cast<int>(texto.size());
  const int n =
      WideCharToMultiByte(CP_UTF8, 0, texto.data(), tamanho, nullptr, 0, nullptr, nullptr);
  std::string resultado(static_cast<std::size_t>(n), '\0');
  WideCharToMultiByte(CP_UTF8, 0, texto.data(), tamanho, resultado.data(), n, nullptr, nullptr);
  return resultado;
}

// The UTF-16 of a UTF-8 text.
inline std::wstring Largo(std::string_view texto) {
  const int tamanho = static_cast<int>(texto.size());
  const int n = MultiByteToWideChar(CP_UTF8, 0, texto.data(), tamanho, nullptr, 0);
  std::wstring resultado(static_cast<std::size_t>(n), L'\0');
  MultiByteToWideChar(CP_UTF8, 0, texto.data(), tamanho, resultado.data(), n);
  return resultado;
}

// The BSTRs of Valida_Dados and Valida_Fichas: the file, the working folder, the remessa number
// the run writes back, blank server and origin, and the "#" separator; freed with the object.
struct ArgumentosDaValidacao {
  ArgumentosDaValidacao(const std::wstring& arquivo, const std::wstring& diretorio)
      : nome(SysAllocString(arquivo.c_str())), pasta(SysAllocString(diretorio.c_str())) {}
  ~ArgumentosDaValidacao() {
    for (BSTR b : {nome, pasta, vazio, separador, numero})
      SysFreeString(b);
  }
  ArgumentosDaValidacao(const ArgumentosDaValidacao&) = delete;
  ArgumentosDaValidacao& operator=(const ArgumentosDaValidacao&) = delete;

  BSTR nome;
  BSTR pasta;
  BSTR vazio = SysAllocString(L"");
  BSTR separador = SysAllocString(L"#");
  BSTR numero = SysAllocString(L"");
};

}  // namespace cliente

#endif  // QUORVVALIDA_TESTS_COM_CLIENTE_HPP_
