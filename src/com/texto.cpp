#include "texto.hpp"

namespace quorv::com {
namespace {

std::string Utf8(const wchar_t* texto, int tamanho) {
  if (tamanho <= 0) return std::string();
  const int bytes = WideCharToMultiByte(CP_UTF8, 0, texto, tamanho, nullptr, 0, nullptr, nullptr);
  std::string resultado(static_cast<std::size_t>(bytes), '\0');
  WideCharToMultiByte(CP_UTF8, 0, texto, tamanho, resultado.data(), bytes, nullptr, nullptr);
  return resultado;
}

}  // namespace

std::string Utf8(BSTR texto) {
  return Utf8(texto, texto == nullptr ? 0 : static_cast<int>(SysStringLen(texto)));
}

std::string Utf8(const std::wstring& texto) {
  return Utf8(texto.data(), static_cast<int>(texto.size()));
}

std::wstring Largo(const std::string& texto) {
  if (texto.empty()) return std::wstring();
  const int tamanho = static_cast<int>(texto.size());
  const int largos = MultiByteToWideChar(CP_UTF8, 0, texto.data(), tamanho, nullptr, 0);
  std::wstring resultado(static_cast<std::size_t>(largos), L'\0');
  MultiByteToWideChar(CP_UTF8, 0, texto.data(), tamanho, resultado.data(), largos);
  return resultado;
}

BSTR NovoBstr(const std::string& texto) {
  const std::wstring largo = Largo(texto);
  return SysAllocStringLen(largo.data(), static_cast<UINT>(largo.size()));
}

void Substitui(BSTR* destino, const std::string& texto) {
  if (destino == nullptr || Utf8(*destino) == texto) return;
  SysFreeString(*destino);
  *destino = NovoBstr(texto);
}

}  // namespace quorv::com
