// Reading fixed-width fields: columns, blanks, numbers and zero-padded masks. Everything works
// on single-byte text in place, without allocating, and never looks at the machine's locale.
#ifndef QUORVVALIDA_SRC_COMPONENT_SHARED_TEXTO_HPP_
#define QUORVVALIDA_SRC_COMPONENT_SHARED_TEXTO_HPP_

#include <cstdint>
#include <cstring>
#include <optional>
#include <string>
#include <string_view>

#if defined(_WIN32) && defined(__SSE2__) && (defined(__GNUC__) || defined(__clang__))
#include <emmintrin.h>
#define QUORVVALIDA_PROCURA_SSE2 1
#elif defined(__wasm_simd128__)
#include <wasm_simd128.h>
#define QUORVVALIDA_PROCURA_WASM 1
#endif

// A routine so small and so often called that every caller gets it written in place: a call
// would cost more than the routine.
#if defined(_MSC_VER)
#define QUORV_SEMPRE_EM_LINHA __forceinline
#else
#define QUORV_SEMPRE_EM_LINHA inline __attribute__((always_inline))
#endif

namespace quorv::texto {

// A field of a fixed-width record: 1-based first column and width.
struct Coluna {
  int inicio;
  int largura;
};

// The first occurrence of a byte in a span, or null. Every line goes through this twice (its break
// and the "#" that may not occur in it). Linux's C library searches many bytes at a time. The
// msvcrt that the Windows build links against was measured, under Wine, walking byte by byte (a
// quarter of an invoice run), and WebAssembly's a word at a time (a tenth of a run in node): those
// builds search sixteen bytes at a time here.
inline const char* ProcuraByte(const char* inicio, std::size_t tamanho, char byte) {
#if defined(QUORVVALIDA_PROCURA_SSE2)
  const __m128i alvo = _mm_set1_epi8(byte);
  while (tamanho >= 16) {
    const __m128i bloco = _mm_loadu_si128(reinterpret_cast<const __m128i*>(inicio));
    const int achados = _mm_movemask_epi8(_mm_cmpeq_epi8(bloco, alvo));
    if (achados != 0) return inicio + __builtin_ctz(static_cast<unsigned>(achados));
    inicio += 16;
    tamanho -= 16;
  }
#elif defined(QUORVVALIDA_PROCURA_WASM)
  const v128_t alvo = wasm_i8x16_splat(byte);
  while (tamanho >= 16) {
    const auto achados =
        static_cast<unsigned>(wasm_i8x16_bitmask(wasm_i8x16_eq(wasm_v128_load(inicio), alvo)));
    if (achados != 0) return inicio + __builtin_ctz(achados);
    inicio += 16;
    tamanho -= 16;
  }
#endif
  return static_cast<const char*>(std::memchr(inicio, byte, tamanho));
}

// True when the byte occurs in the text.
inline bool Contem(std::string_view texto, char byte) {
  return ProcuraByte(texto.data(), texto.size(), byte) != nullptr;
}

// The field's text in the line; what the line does not reach is left out.
inline std::string_view Campo(std::string_view linha, Coluna coluna) {
  const auto inicio = static_cast<std::size_t>(coluna.inicio - 1);
  if (inicio >= linha.size()) return {};
  return linha.substr(inicio, static_cast<std::size_t>(coluna.largura));
}

// The text without blanks (spaces) at either end.
inline std::string_view Apara(std::string_view texto) {
  std::size_t primeiro = 0;
  std::size_t fim = texto.size();
  while (primeiro < fim && texto[primeiro] == ' ')
    ++primeiro;
  while (fim > primeiro && texto[fim - 1] == ' ')
    --fim;
  return texto.substr(primeiro, fim - primeiro);
}

// True when the text is empty after trimming blanks.
inline bool EmBranco(std::string_view texto) {
  return Apara(texto).empty();
}

// True when the text is made of digits only, and at least one.
inline bool SoDigitos(std::string_view texto) {
  for (char c : texto) {
    if (c < '0' || c > '9') return false;
  }
  return !texto.empty();
}

// A text of at most N characters kept in place, as the fixed-width field it comes from: a run
// keeps fields of earlier records so without taking memory for each.
template <std::size_t N>
class TextoFixo {
 public:
  // Keeps the text, cut to N characters.
  TextoFixo& operator=(std::string_view texto) {
    tamanho_ = texto.size() < N ? texto.size() : N;
    std::memcpy(texto_, texto.data(), tamanho_);
    return *this;
  }
  operator std::string_view() const { return std::string_view(texto_, tamanho_); }
  friend bool operator==(const TextoFixo& a, std::string_view b) {
    return std::string_view(a) == b;
  }
  friend bool operator!=(const TextoFixo& a, std::string_view b) { return !(a == b); }
  friend bool operator==(std::string_view a, const TextoFixo& b) { return b == a; }
  friend bool operator!=(std::string_view a, const TextoFixo& b) { return !(b == a); }

 private:
  char texto_[N] = {};
  std::size_t tamanho_ = 0;
};

// True when the trimmed text, upper-cased (ASCII), equals the expected upper-case word.
bool IgualSemCaixa(std::string_view texto, std::string_view palavra);

// The value of a numeric text (see geral.hpp for what counts as numeric); empty otherwise.
std::optional<double> NumeroEscrito(std::string_view texto);

// The value of a character as a digit: above 9 when it is not one.
inline unsigned Digito(char c) {
  return static_cast<unsigned char>(c) - static_cast<unsigned>('0');
}

// Reads the common case of a fixed-width field: digits alone, at most 15 of them, which make a
// whole number that a double holds exactly; false for any other text. The digits are taken four
// at a time, each group worked out on its own, so that the chain of multiplications that makes
// the whole number is a quarter as long.
QUORV_SEMPRE_EM_LINHA bool LeSoDigitos(std::string_view texto, double& valor) {
  if (texto.empty() || texto.size() > 15) return false;
  std::uint64_t digitos = 0;
  bool soDigitos = true;
  std::size_t i = 0;
  for (; i + 4 <= texto.size(); i += 4) {
    const unsigned a = Digito(texto[i]);
    const unsigned b = Digito(texto[i + 1]);
    const unsigned c = Digito(texto[i + 2]);
    const unsigned d = Digito(texto[i + 3]);
    soDigitos = soDigitos & (a <= 9) & (b <= 9) & (c <= 9) & (d <= 9);
    digitos = digitos * 10000 + ((a * 10 + b) * 100 + c * 10 + d);
  }
  for (; i < texto.size(); ++i) {
    const unsigned a = Digito(texto[i]);
    soDigitos = soDigitos & (a <= 9);
    digitos = digitos * 10 + a;
  }
  valor = static_cast<double>(digitos);
  return soDigitos;
}

// The same as NumeroEscrito, with the common case read at once where the field is taken.
QUORV_SEMPRE_EM_LINHA std::optional<double> Numero(std::string_view texto) {
  double valor = 0;
  if (LeSoDigitos(texto, valor)) return valor;
  return NumeroEscrito(texto);
}

// True when the text is numeric.
inline bool EhNumerico(std::string_view texto) {
  return Numero(texto).has_value();
}

// The value of a numeric text, -1 otherwise (the sentinel of the shared routines).
double NumeroOuMenosUm(std::string_view texto);

// The value of a numeric text rounded half to even into 32 bits; -1 when not numeric or too big.
int32_t InteiroOuMenosUm(std::string_view texto);

// The leading number of a text: blanks skipped, an optional sign, digits and one "." with
// digits, read up to the first character that cannot continue it; 0 when there is none.
double ValorInicial(std::string_view texto);

// A numeric text laid into a mask of `largura` zeros: the value rounded half away from zero,
// with leading zeros (and a "-" before them when negative). A text that is not numeric comes
// back unchanged, as a mask of digit placeholders leaves text.
std::string MascaraZeros(std::string_view texto, int largura);

// A number laid into a mask of `largura` zeros, rounded half away from zero.
std::string MascaraZeros(double valor, int largura);

// The shortest fixed-point text that reads back as the same number, with "," as the decimal
// mark whatever the machine's locale ("0" for zero, "123", "0,5").
std::string TextoDoNumero(double valor);

}  // namespace quorv::texto

#endif  // QUORVVALIDA_SRC_COMPONENT_SHARED_TEXTO_HPP_
