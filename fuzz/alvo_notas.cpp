// The invoice run over any bytes. The input's length chooses the optional arguments, so that the
// counting origin "A0", another separator and keys with fractions are reached too. Promises: the
// status is one of 0, 1, 8, 9; a run of status 0 leaves no warnings file; the input is only read.
#include <cstdint>
#include <string>

#include "apoio.hpp"
#include "quorvvalida/geral.hpp"
#include "quorvvalida/validacao.hpp"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* dados, std::size_t tamanho) {
  using namespace quorv;
  static const bool preparado = [] {
    // A registration made of digits only is valid for the home state: the record checks get past
    // the registration fields either way.
    DefinirVerificadorInscricao([](const std::string& inscricao, const std::string& uf) {
      return static_cast<int16_t>(uf == "QZ" && !inscricao.empty() &&
                                          inscricao.find_first_not_of("0123456789") ==
                                              std::string::npos
                                      ? 0
                                      : 1);
    });
    return true;
  }();
  static_cast<void>(preparado);

  const std::string_view bytes = fuzz::Bytes(dados, tamanho);
  const std::string entrada = fuzz::Caminho("remessa.txt");
  fuzz::Grava(entrada, bytes);

  Validacao validacao;
  validacao.Hoje = [] { return SerialDaData(2024, 6, 30); };
  std::string numero;
  int16_t status = 0;
  switch (tamanho % 3) {
    case 0:
      status = validacao.Valida_Dados(entrada, numero, fuzz::Diretorio());
      break;
    case 1:
      status = validacao.Valida_Dados(entrada, numero, fuzz::Diretorio(), 0, 0, "A0");
      break;
    default:
      status =
          validacao.Valida_Dados(entrada, numero, fuzz::Diretorio(), 12.5, -3, "", "SRV", "<=>");
      break;
  }
  if (status != 0 && status != 1 && status != 8 && status != 9)
    fuzz::Quebrou("status fora de 0, 1, 8, 9");
  if (status == 0 && fuzz::Existe(fuzz::Caminho("ADVERTENCIAS.TXT"))) {
    fuzz::Quebrou("execução limpa deixou ADVERTENCIAS.TXT");
  }
  if (fuzz::Le(entrada) != bytes) fuzz::Quebrou("a entrada mudou");
  return 0;
}
