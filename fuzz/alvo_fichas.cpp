// The form run over any bytes. The input's length chooses the optional arguments: the web
// system's server name (structure rules only), a return file's origin with another separator,
// or the defaults. Promises: the status is 8 or 9 (a form run never ends with 0 or 1), 9 when
// the run failed inside; the input is only read.
#include <cstdint>
#include <string>

#include "apoio.hpp"
#include "quorvvalida/geral.hpp"
#include "quorvvalida/validacao_ficha_cadastral.hpp"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* dados, std::size_t tamanho) {
  using namespace quorv;
  const std::string_view bytes = fuzz::Bytes(dados, tamanho);
  const std::string entrada = fuzz::Caminho("fichas.txt");
  fuzz::Grava(entrada, bytes);

  ValidacaoFichaCadastral validacao;
  validacao.Hoje = [] { return SerialDaData(2024, 6, 30); };
  std::string numero;
  int16_t status = 0;
  switch (tamanho % 3) {
    case 0:
      status = validacao.Valida_Fichas(entrada, numero, fuzz::Diretorio());
      break;
    case 1:
      status = validacao.Valida_Fichas(entrada, numero, fuzz::Diretorio(), 0, 0, "REM", "tarnweb ");
      break;
    default:
      status = validacao.Valida_Fichas(entrada, numero, fuzz::Diretorio(), 7, 0.5, "RET", "", ";");
      break;
  }
  if (status != 8 && status != 9) fuzz::Quebrou("status fora de 8 e 9");
  if (validacao.bTem_Erro_Grave && status != 9) fuzz::Quebrou("falha grave sem status 9");
  if (fuzz::Le(entrada) != bytes) fuzz::Quebrou("a entrada mudou");
  return 0;
}
