#include "component/files/linha_advertencia.hpp"

#include <charconv>
#include <cstring>

#include "component/shared/texto.hpp"

namespace quorv {
namespace {

constexpr texto::Coluna kSequencia{1, 8};
constexpr std::size_t kDigitosDaLinha = 8;

// The line number laid into the mask "00000000". The common cases, a whole number of up to
// eight digits and a sequence column of eight digits, are written directly into `digitos`; they
// read the same through the mask. Any other goes through the mask into `mascarado`.
std::string_view NumeroDaLinha(std::string_view registro, double numero,
                               char (&digitos)[kDigitosDaLinha], std::string& mascarado) {
  if (numero == 0) {
    const std::string_view sequencia = texto::Campo(registro, kSequencia);
    if (sequencia.size() == kDigitosDaLinha && texto::SoDigitos(sequencia)) return sequencia;
    mascarado = texto::MascaraZeros(sequencia, kDigitosDaLinha);
    return mascarado;
  }
  if (numero > 0 && numero < 1e8 && numero == static_cast<double>(static_cast<int32_t>(numero))) {
    auto valor = static_cast<int32_t>(numero);
    for (std::size_t i = kDigitosDaLinha; i > 0; --i) {
      digitos[i - 1] = static_cast<char>('0' + valor % 10);
      valor /= 10;
    }
    return std::string_view(digitos, kDigitosDaLinha);
  }
  mascarado = texto::MascaraZeros(numero, kDigitosDaLinha);
  return mascarado;
}

// Copies the piece at the position and answers where the next begins.
char* Copia(char* destino, std::string_view pedaco) {
  std::memcpy(destino, pedaco.data(), pedaco.size());
  return destino + pedaco.size();
}

}  // namespace

void LinhaAdvertencia::Prepara(std::string_view separador, double chaveRemessa,
                               double chaveProcessamento) {
  separador_.assign(separador);
  chaves_ = separador_ + texto::TextoDoNumero(chaveRemessa) + separador_ +
            texto::TextoDoNumero(chaveProcessamento) + separador_;
}

std::string_view LinhaAdvertencia::Monta(int32_t codigo, std::string_view registro, double numero) {
  char texto[16];
  const char* fim = std::to_chars(texto, texto + sizeof texto, codigo).ptr;
  const std::string_view codigoTexto(texto, static_cast<std::size_t>(fim - texto));
  char digitos[kDigitosDaLinha];
  const std::string_view numeroTexto = NumeroDaLinha(registro, numero, digitos, mascarado_);
  constexpr std::string_view kFimDeLinha = "\r\n";
  // The line is laid into a buffer that only grows, so that a run's lines take no new memory.
  const std::size_t tamanho = codigoTexto.size() + chaves_.size() + registro.size() +
                              separador_.size() + numeroTexto.size() + kFimDeLinha.size();
  if (linha_.size() < tamanho) linha_.resize(tamanho);
  char* p = linha_.data();
  p = Copia(p, codigoTexto);
  p = Copia(p, chaves_);
  p = Copia(p, registro);
  p = Copia(p, separador_);
  p = Copia(p, numeroTexto);
  Copia(p, kFimDeLinha);
  return std::string_view(linha_.data(), tamanho);
}

}  // namespace quorv
