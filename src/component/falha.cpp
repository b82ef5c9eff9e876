#include "quorvvalida/falha.hpp"

namespace quorv {

const char* DescricaoDaFalha(Falha falha) {
  switch (falha) {
    case Falha::Nenhuma:
      return "Nenhuma falha.";
    case Falha::EntradaInacessivel:
      return "O arquivo a validar não existe, é um diretório ou não pode ser lido.";
    case Falha::DiretorioInexistente:
      return "O diretório de trabalho não existe.";
    case Falha::EntradaEhAdvertencias:
      return "O arquivo a validar é o próprio ADVERTENCIAS.TXT do diretório de trabalho; "
             "nada foi validado e o arquivo ficou como estava.";
    case Falha::AdvertenciasNaoCriadas:
      return "Não foi possível criar ADVERTENCIAS.TXT no diretório de trabalho.";
    case Falha::EscritaAdvertencias:
      return "Falha ao gravar ADVERTENCIAS.TXT (disco cheio ou erro de entrada e saída); o "
             "arquivo não contém todas as advertências.";
    case Falha::RetornoNaoCriado:
      return "Não foi possível criar o arquivo de retorno.";
    case Falha::EscritaRetorno:
      return "Falha ao gravar o arquivo de retorno (disco cheio ou erro de entrada e saída); o "
             "arquivo está incompleto.";
    case Falha::RetornoEhEntrada:
      return "O arquivo de retorno seria o próprio arquivo a validar ou o ADVERTENCIAS.TXT do "
             "diretório de trabalho; nada foi validado nem gravado.";
    case Falha::ErroGrave:
      return "Um registro com tipo não numérico (uma linha vazia, por exemplo) interrompeu a "
             "validação das fichas.";
    case Falha::FalhaInterna:
      return "Uma falha interna (memória ou um evento do programa que chama) interrompeu a "
             "validação.";
  }
  return "Falha desconhecida.";
}

}  // namespace quorv
