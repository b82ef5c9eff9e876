#include "resultados.hpp"

#include "codigos_saida.hpp"

namespace quorv::ferramenta {

const char* SignificadoDoStatus(Tipo tipo, int16_t status) {
  switch (status) {
    case 0:
      return "arquivo lido até o trailer, sem advertências";
    case 1:
      return "advertências nos registros; arquivo lido até o fim";
    case 8:
      return tipo == Tipo::kNotas
                 ? "erro de estrutura; validação interrompida na linha da advertência"
                 : "validação encerrada no trailer ou num erro de estrutura";
    case 9:
      return "arquivo não validado";
    default:
      return "status desconhecido";
  }
}

const char* TipoDaFalha(Falha falha) {
  switch (falha) {
    case Falha::Nenhuma:
      return "nenhuma";
    case Falha::EntradaInacessivel:
      return "entrada_inacessivel";
    case Falha::DiretorioInexistente:
      return "diretorio_inexistente";
    case Falha::EntradaEhAdvertencias:
      return "entrada_e_advertencias";
    case Falha::AdvertenciasNaoCriadas:
      return "advertencias_nao_criadas";
    case Falha::EscritaAdvertencias:
      return "escrita_advertencias";
    case Falha::RetornoNaoCriado:
      return "retorno_nao_criado";
    case Falha::EscritaRetorno:
      return "escrita_retorno";
    case Falha::RetornoEhEntrada:
      return "retorno_e_entrada";
    case Falha::ErroGrave:
      return "erro_grave";
    case Falha::FalhaInterna:
      return "falha_interna";
  }
  return "falha_interna";
}

int CodigoDaFalha(Falha falha) {
  if (falha == Falha::Nenhuma) return kAceito;
  return falha == Falha::FalhaInterna ? kErroInterno : kFalhaEntradaSaida;
}

bool FalhaAntesDasAdvertencias(Falha falha) {
  return falha == Falha::EntradaInacessivel || falha == Falha::DiretorioInexistente ||
         falha == Falha::EntradaEhAdvertencias || falha == Falha::AdvertenciasNaoCriadas ||
         falha == Falha::RetornoEhEntrada;
}

}  // namespace quorv::ferramenta
