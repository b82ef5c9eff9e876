// The web facade's return file written from any warnings file; the input's length chooses the
// kind. Promises: the return file is written and starts with its heading.
#include <cstdint>
#include <string>

#include "apoio.hpp"
#include "web/retorno.hpp"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* dados, std::size_t tamanho) {
  using namespace quorv;
  const std::string advertencias = fuzz::Caminho("ADVERTENCIAS.TXT");
  const std::string retorno = fuzz::Caminho("RETORNO.TXT");
  fuzz::Grava(advertencias, fuzz::Bytes(dados, tamanho));
  const web::TipoRetorno tipo =
      tamanho % 2 == 0 ? web::TipoRetorno::kNotas : web::TipoRetorno::kFichas;
  if (!web::GravaRetorno(tipo, advertencias, retorno, "000001")) {
    fuzz::Quebrou("arquivo de retorno não gravado");
  }
  const std::string cabecalho = "SECRETARIA DA FAZENDA - ESTADO DO VALDORIA\r\n";
  if (fuzz::Le(retorno).compare(0, cabecalho.size(), cabecalho) != 0) {
    fuzz::Quebrou("retorno sem o cabeçalho");
  }
  return 0;
}
