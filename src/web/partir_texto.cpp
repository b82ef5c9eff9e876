#include "web/partir_texto.hpp"

#include <vector>

#include "component/shared/texto.hpp"

namespace quorv::web {
namespace {

// A character of UTF-8 text is its lead byte and the continuation bytes after it.
bool Continuacao(char c) {
  return (static_cast<unsigned char>(c) & 0xC0) == 0x80;
}

long long Caracteres(std::string_view texto) {
  long long total = 0;
  for (char c : texto) {
    if (!Continuacao(c)) ++total;
  }
  return total;
}

// The bytes of the first `caracteres` characters of the text (all of it when it is shorter).
std::size_t BytesDe(std::string_view texto, long long caracteres) {
  std::size_t i = 0;
  for (long long k = 0; k < caracteres && i < texto.size(); ++k) {
    ++i;
    while (i < texto.size() && Continuacao(texto[i]))
      ++i;
  }
  return i;
}

// The words between single blanks: two blanks in a row hold an empty word.
std::vector<std::string_view> Palavras(std::string_view texto) {
  std::vector<std::string_view> palavras;
  if (texto.empty()) return palavras;
  std::size_t inicio = 0;
  for (;;) {
    const std::size_t branco = texto.find(' ', inicio);
    if (branco == std::string_view::npos) {
      palavras.push_back(texto.substr(inicio));
      return palavras;
    }
    palavras.push_back(texto.substr(inicio, branco - inicio));
    inicio = branco + 1;
  }
}

}  // namespace

std::string PedacoDoTexto(std::string_view texto, int pedaco, int largura) {
  std::vector<std::string_view> palavras = Palavras(texto);
  // A text without a blank is never cut, not even a single word longer than the width.
  if (palavras.size() < 2) return {};

  std::string linha;
  long long caracteresLinha = 0;
  int contador = 1;
  for (std::string_view& palavra : palavras) {
    const long long caracteresPalavra = Caracteres(palavra);
    // The test counts one blank more than the line will hold, because the line already ends
    // with its blank: every line has one character less room than the width. Deliberate.
    if (caracteresLinha + 1 + caracteresPalavra <= largura) {
      linha += palavra;
      linha += ' ';
      caracteresLinha += caracteresPalavra + 1;
      continue;
    }
    if (caracteresPalavra > largura) {
      // A word longer than the width fills the line up to the width, and its rest starts the
      // next line whole, however long it is.
      const long long inicioResto = largura - caracteresLinha + 1;
      // A negative width, or a line already longer than the width (it starts with such a
      // rest), leaves nothing that can be cut: the answer is empty.
      if (largura < 0 || inicioResto < 1) return {};
      linha += palavra;
      linha.resize(BytesDe(linha, largura));
      caracteresLinha = Caracteres(linha);
      palavra.remove_prefix(BytesDe(palavra, inicioResto - 1));
    }
    if (contador == pedaco) break;
    linha.assign(palavra);
    linha += ' ';
    caracteresLinha = Caracteres(linha);
    ++contador;
  }
  return contador == pedaco ? std::string(texto::Apara(linha)) : std::string();
}

}  // namespace quorv::web
