#include "component/files/linha_advertencia.hpp"

#include <charconv>

#include "component/shared/texto.hpp"

namespace quorv {
namespace {

constexpr texto::Coluna kSequencia{1, 8};
constexpr std::size_t kDigitosDaLinha = 8;

// Appends the line number laid into the mask "00000000". The common cases, a whole number of up
// to eight digits and a sequence column of eight digits, are written directly; they read the
// same through the mask.
void AcrescentaNumero(std::string& linha, std::string_view registro, double numero) {
  if (numero == 0) {
    const std::string_view sequencia = texto::Campo(registro, kSequencia);
    if (sequencia.size() == kDigitosDaLinha && texto::SoDigitos(sequencia)) {
      linha += sequencia;
    } else {
      linha += texto::MascaraZeros(sequencia, kDigitosDaLinha);
    }
    return;
  }
  if (numero > 0 && numero < 1e8 && numero == static_cast<double>(static_cast<int32_t>(numero))) {
    char digitos[kDigitosDaLinha];
    auto valor = static_cast<int32_t>(numero);
    for (std::size_t i = kDigitosDaLinha; i > 0; --i) {
      digitos[i - 1] = static_cast<char>('0' + valor % 10);
      valor /= 10;
    }
    linha.append(digitos, kDigitosDaLinha);
    return;
  }
  linha += texto::MascaraZeros(numero, kDigitosDaLinha);
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
  linha_.assign(texto, static_cast<std::size_t>(fim - texto));
  linha_ += chaves_;
  linha_ += registro;
  linha_ += separador_;
  AcrescentaNumero(linha_, registro, numero);
  linha_ += "\r\n";
  return linha_;
}

}  // namespace quorv
