#include "component/shared/cp1252.hpp"

#include <cstdint>

namespace quorv::cp1252 {
namespace {

// Code points of bytes 0x80 to 0x9F; the five bytes the code page leaves free map to the
// control characters of the same number, as Windows itself converts them.
constexpr char32_t kFaixa80[32] = {0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021,
                                   0x02C6, 0x2030, 0x0160, 0x2039, 0x0152, 0x008D, 0x017D, 0x008F,
                                   0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014,
                                   0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};

char32_t CodigoDoByte(unsigned char byte) {
  return byte >= 0x80 && byte <= 0x9F ? kFaixa80[byte - 0x80] : byte;
}

char ByteDoCodigo(char32_t codigo) {
  if (codigo < 0x80 || (codigo >= 0xA0 && codigo <= 0xFF)) return static_cast<char>(codigo);
  for (int i = 0; i < 32; ++i) {
    if (kFaixa80[i] == codigo) return static_cast<char>(0x80 + i);
  }
  return '?';
}

void AcrescentaUtf8(std::string& destino, char32_t codigo) {
  if (codigo < 0x80) {
    destino += static_cast<char>(codigo);
  } else if (codigo < 0x800) {
    destino += static_cast<char>(0xC0 | (codigo >> 6));
    destino += static_cast<char>(0x80 | (codigo & 0x3F));
  } else {
    destino += static_cast<char>(0xE0 | (codigo >> 12));
    destino += static_cast<char>(0x80 | ((codigo >> 6) & 0x3F));
    destino += static_cast<char>(0x80 | (codigo & 0x3F));
  }
}

// Reads one UTF-8 character at i and advances i; a malformed sequence reads as one "?" byte.
char32_t LeUtf8(std::string_view texto, std::size_t& i) {
  const auto primeiro = static_cast<unsigned char>(texto[i]);
  int seguintes = 0;
  char32_t codigo = 0;
  if (primeiro < 0x80) {
    ++i;
    return primeiro;
  } else if ((primeiro & 0xE0) == 0xC0) {
    seguintes = 1;
    codigo = primeiro & 0x1F;
  } else if ((primeiro & 0xF0) == 0xE0) {
    seguintes = 2;
    codigo = primeiro & 0x0F;
  } else if ((primeiro & 0xF8) == 0xF0) {
    seguintes = 3;
    codigo = primeiro & 0x07;
  } else {
    ++i;
    return U'?';
  }
  if (i + static_cast<std::size_t>(seguintes) >= texto.size()) {
    ++i;
    return U'?';
  }
  for (int k = 1; k <= seguintes; ++k) {
    const auto byte = static_cast<unsigned char>(texto[i + static_cast<std::size_t>(k)]);
    if ((byte & 0xC0) != 0x80) {
      ++i;
      return U'?';
    }
    codigo = (codigo << 6) | (byte & 0x3F);
  }
  i += static_cast<std::size_t>(seguintes) + 1;
  return codigo;
}

}  // namespace

std::string ParaUtf8(std::string_view texto) {
  std::string resultado;
  resultado.reserve(texto.size());
  for (char c : texto)
    AcrescentaUtf8(resultado, CodigoDoByte(static_cast<unsigned char>(c)));
  return resultado;
}

std::string DeUtf8(std::string_view texto) {
  std::string resultado;
  resultado.reserve(texto.size());
  for (std::size_t i = 0; i < texto.size();)
    resultado += ByteDoCodigo(LeUtf8(texto, i));
  return resultado;
}

std::size_t Caracteres(std::string_view texto) {
  std::size_t total = 0;
  for (std::size_t i = 0; i < texto.size(); ++total)
    LeUtf8(texto, i);
  return total;
}

}  // namespace quorv::cp1252
