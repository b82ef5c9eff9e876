// ValidacaoTarnWEB: the web system's properties, the producer-invoice entry point and the
// word-wrapping routine of the return file.
#include "quorvvalida/validacao_tarnweb.hpp"

#include "component/shared/texto.hpp"
#include "quorvvalida/validacao.hpp"
#include "web/partir_texto.hpp"
#include "web/retorno.hpp"

namespace quorv {
namespace {

// The value trimmed of blanks at both ends and upper-cased (ASCII letters).
std::string Normaliza(std::string_view valor) {
  std::string normalizado(texto::Apara(valor));
  for (char& c : normalizado) {
    if (c >= 'a' && c <= 'z') c = static_cast<char>(c - 'a' + 'A');
  }
  return normalizado;
}

}  // namespace

void ValidacaoTarnWEB::TipoArquivo(const std::string& valor) {
  tipoArquivo_ = Normaliza(valor);
}

void ValidacaoTarnWEB::ProgramaChamador(const std::string& valor) {
  programaChamador_ = Normaliza(valor);
}

std::string ValidacaoTarnWEB::BreakString(const std::string& psTexto, int16_t piSub,
                                          int16_t piMaxLen) const {
  try {
    return web::PedacoDoTexto(psTexto, piSub, piMaxLen);
  } catch (...) {
    return {};
  }
}

bool ValidacaoTarnWEB::Valida_Dados_Tarnweb(const std::string& sFilePath,
                                            const std::string& sFileRetorno,
                                            const std::string& sDirTrabalho,
                                            std::string& nNumeroRemessa) {
  falha_ = Falha::Nenhuma;
  try {
    // The return file is written over whatever its path names: the file being validated, or
    // the warnings file it is made from, would be lost.
    if (web::RetornoColide(sFilePath, sDirTrabalho, sFileRetorno)) {
      falha_ = Falha::RetornoEhEntrada;
      return false;
    }
    Validacao validacao;
    validacao.Hoje = Hoje;
    // Without a calling program the web system's origin "A0" makes the run count the records
    // of the groups without checking them. TipoArquivo is not looked at here, on purpose.
    const std::string origem = programaChamador_.empty() ? "A0" : programaChamador_;
    validacao.Valida_Dados(sFilePath, nNumeroRemessa, sDirTrabalho, 0, 0, origem, "", "#");
    falha_ = validacao.UltimaFalha();
    return web::Conclui(web::TipoRetorno::kNotas, sDirTrabalho, sFileRetorno, nNumeroRemessa,
                        falha_);
  } catch (...) {
    falha_ = Falha::FalhaInterna;
    return false;
  }
}

}  // namespace quorv
