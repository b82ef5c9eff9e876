#include "comandos.hpp"

#include <cstdio>
#include <filesystem>
#include <system_error>

#include <fmt/core.h>

#include "advertencias_arquivo.hpp"
#include "codigos_saida.hpp"
#include "diagnostico.hpp"
#include "quorvvalida/quorvvalida.hpp"
#include "saida.hpp"

namespace quorv::ferramenta {
namespace {

namespace fs = std::filesystem;

bool EhArquivoComum(const std::string& caminho) {
  std::error_code erro;
  return fs::is_regular_file(fs::u8path(caminho), erro);
}

Relogio RelogioDe(const OpcoesGerais& gerais) {
  if (!gerais.hoje) return {};
  const double hoje = *gerais.hoje;
  return [hoje] { return hoje; };
}

// The warnings file as the library names it: the directory, the platform's separator and
// ADVERTENCIAS.TXT.
std::string CaminhoAdvertencias(const std::string& diretorio) {
  return (fs::u8path(diretorio) / "ADVERTENCIAS.TXT").u8string();
}

// A library failure told for the file and the directory concerned, in one line.
std::string MensagemDaFalha(Falha falha, const std::string& mostrado,
                            const std::string& diretorio) {
  const std::string advertencias = CaminhoAdvertencias(diretorio);
  switch (falha) {
    case Falha::EntradaInacessivel:
      return MotivoDaEntrada(mostrado);
    case Falha::DiretorioInexistente:
      return "diretório de trabalho não encontrado: " + diretorio;
    case Falha::EntradaEhAdvertencias:
      return fmt::format(
          "o arquivo a validar é o próprio ADVERTENCIAS.TXT do diretório de trabalho ({}), que a "
          "validação substituiria; nada foi validado e o arquivo ficou como estava; use outro "
          "diretório de trabalho (-d)",
          advertencias);
    case Falha::AdvertenciasNaoCriadas:
      return "não foi possível criar o arquivo de advertências: " + advertencias +
             "; verifique se o diretório de trabalho aceita gravação";
    case Falha::EscritaAdvertencias:
      return "falha ao gravar o arquivo de advertências (disco cheio ou erro de entrada e "
             "saída): " +
             advertencias + "; ele não contém todas as advertências da validação";
    case Falha::ErroGrave:
      return "a validação das fichas parou num registro cujo tipo não é numérico (uma linha "
             "vazia, por exemplo); as advertências até ali estão em " +
             advertencias;
    case Falha::FalhaInterna:
      return "falha interna durante a validação (memória ou uma exceção inesperada)";
    default:
      return DescricaoDaFalha(falha);
  }
}

}  // namespace

std::string MotivoDaEntrada(const std::string& arquivo) {
  std::error_code erro;
  const fs::path caminho = fs::u8path(arquivo);
  if (!fs::exists(caminho, erro)) return "arquivo não encontrado: " + arquivo;
  if (fs::is_directory(caminho, erro)) {
    return "o caminho é um diretório, não um arquivo: " + arquivo +
           "; use --recursivo para validar os arquivos dentro dele";
  }
  return "não foi possível ler o arquivo: " + arquivo;
}

Relator::Relator(const OpcoesGerais& gerais)
    : gerais_(gerais), escritor_([](std::string_view bytes) {
        return std::fwrite(bytes.data(), 1, bytes.size(), stdout) == bytes.size();
      }) {}

Relator::Relator(const OpcoesGerais& gerais, std::function<bool(std::string_view)> escreve)
    : gerais_(gerais), escritor_(std::move(escreve)) {}

void Relator::Validacao(const ResultadoValidacao& resultado) {
  if (gerais_.json) {
    json_v1::EscreveValidacao(escritor_, resultado);
    return;
  }
  if (!gerais_.quieto) ImprimeResumo(resultado, gerais_.limite);
  std::fflush(stdout);
  if (resultado.erro) Aviso(resultado.erro->mensagem);
  if (resultado.diagnostico) Aviso("diagnóstico: " + resultado.diagnostico->mensagem);
}

void Relator::Web(const ResultadoWeb& resultado) {
  if (gerais_.json) {
    json_v1::EscreveWeb(escritor_, resultado);
    return;
  }
  if (!gerais_.quieto) ImprimeWeb(resultado);
  std::fflush(stdout);
  if (resultado.erro) Aviso(resultado.erro->mensagem);
}

void Relator::Mensagem(const ResultadoMensagem& resultado) {
  if (gerais_.json) {
    json_v1::EscreveMensagem(escritor_, resultado);
    return;
  }
  if (!gerais_.quieto) fmt::print("{}\n", resultado.mensagem);
  std::fflush(stdout);
  if (!resultado.conhecido) {
    Aviso(
        fmt::format("o código {} não está no catálogo de {}; o texto mostrado é a resposta "
                    "padrão do catálogo",
                    resultado.codigo, DescricaoDoTipo(resultado.tipo)));
  }
}

void Relator::Lote(const ResumoLote& resumo) {
  if (gerais_.json) {
    json_v1::EscreveResumoLote(escritor_, resumo);
  } else if (!gerais_.quieto) {
    ImprimeResumoLote(resumo);
  }
}

int Relator::Falha(const Erro& erro, int codigoSaida, const std::string& arquivo) {
  if (gerais_.json) {
    json_v1::EscreveErro(escritor_, erro, codigoSaida, arquivo);
  } else {
    Aviso(erro.mensagem);
  }
  return codigoSaida;
}

void Relator::Nota(const std::string& texto) {
  std::fflush(stdout);
  Aviso(texto);
}

int Relator::Encerra(int codigoSaida) {
  escritor_.Descarrega();
  if (escritor_.Falhou() || !SaidaGravada()) {
    Aviso(
        "falha ao escrever na saída padrão (disco cheio ou saída fechada); o resultado "
        "mostrado está incompleto");
    return PiorCodigo(codigoSaida, kFalhaEntradaSaida);
  }
  return codigoSaida;
}

ResultadoValidacao ValidaUm(const std::string& mostrado, const std::string& caminho, Tipo tipo,
                            const std::string& diretorio, const OpcoesValidacao& opcoes,
                            const OpcoesGerais& gerais,
                            const std::function<void(double&)>& progresso) {
  ResultadoValidacao resultado;
  resultado.arquivo = mostrado;
  resultado.tipo = tipo;
  resultado.diretorio = diretorio;
  resultado.separador = opcoes.separador;
  Falha falha = Falha::Nenhuma;
  if (tipo == Tipo::kNotas) {
    quorv::Validacao validacao;
    validacao.Hoje = RelogioDe(gerais);
    validacao.Progress = progresso;
    resultado.status = validacao.Valida_Dados(caminho, resultado.numeroRemessa, diretorio,
                                              opcoes.chaveRemessa, opcoes.chaveProcessamento,
                                              opcoes.origem, opcoes.servidor, opcoes.separador);
    falha = validacao.UltimaFalha();
  } else {
    ValidacaoFichaCadastral validacao;
    validacao.Hoje = RelogioDe(gerais);
    validacao.FichaProgress = progresso;
    resultado.status = validacao.Valida_Fichas(caminho, resultado.numeroRemessa, diretorio,
                                               opcoes.chaveRemessa, opcoes.chaveProcessamento,
                                               opcoes.origem, opcoes.servidor, opcoes.separador);
    falha = validacao.UltimaFalha();
  }

  // Only a warnings file that this run wrote is this run's: one that an earlier run left, where
  // this one could not start, is named as such and never read.
  const std::string advertencias = CaminhoAdvertencias(diretorio);
  const bool existe = EhArquivoComum(advertencias);
  if (existe && !FalhaAntesDasAdvertencias(falha)) resultado.caminhoAdvertencias = advertencias;
  if (falha != Falha::Nenhuma) {
    std::string mensagem = MensagemDaFalha(falha, mostrado, diretorio);
    if (existe && FalhaAntesDasAdvertencias(falha) && falha != Falha::EntradaEhAdvertencias) {
      mensagem += "; o " + advertencias + " que está lá é de uma execução anterior e não foi lido";
    }
    resultado.erro = Erro{TipoDaFalha(falha), mensagem};
    resultado.codigoSaida = CodigoDaFalha(falha);
  } else {
    resultado.codigoSaida = resultado.caminhoAdvertencias.empty() ? kAceito : kComAdvertencias;
  }
  // A file that fails may fail for its encoding, its line ends or its kind: that is told apart.
  if (falha == Falha::Nenhuma && resultado.codigoSaida == kComAdvertencias) {
    resultado.diagnostico = Diagnostica(caminho, tipo);
    if (resultado.diagnostico && mostrado == "-") {
      // The copy of standard input has no name to give a command: the user's own file has.
      resultado.diagnostico->mensagem += " (no lugar de '-', o arquivo que foi enviado)";
    }
  }
  return resultado;
}

int ValidaWeb(const OpcoesWeb& opcoes, Relator& relator, ResultadoWeb* saida) {
  ResultadoWeb descartado;
  ResultadoWeb& resultado = saida != nullptr ? *saida : descartado;
  // A failure before the facade runs: told as an error object.
  const auto recusa = [&](const Erro& erro, int codigoSaida) {
    resultado.erro = erro;
    resultado.codigoSaida = codigoSaida;
    return relator.Falha(erro, codigoSaida, opcoes.arquivo);
  };
  resultado.arquivo = opcoes.arquivo;
  resultado.diretorio = opcoes.diretorio;
  resultado.incluiTextoRetorno = opcoes.incluiTextoRetorno;
  if (!opcoes.tipo) {
    const Identificacao identificacao = IdentificaTipo(opcoes.arquivo);
    if (!identificacao.aberto) {
      return recusa({"entrada_inacessivel", MotivoDaEntrada(opcoes.arquivo)}, kFalhaEntradaSaida);
    }
    if (!identificacao.identificado) {
      return recusa(
          {"tipo_nao_identificado",
           fmt::format("não foi possível identificar o tipo do arquivo {}: a primeira linha tem "
                       "{} caracteres, e são esperados 160 (notas fiscais de produtor) ou 260 "
                       "(ficha cadastral); informe --tipo P ou --tipo F",
                       opcoes.arquivo, identificacao.comprimento)},
          kUsoIncorreto);
    }
    resultado.tipo = identificacao.tipo;
  } else if (*opcoes.tipo == "P") {
    resultado.tipo = Tipo::kNotas;
  } else if (*opcoes.tipo == "F") {
    resultado.tipo = Tipo::kFichas;
  }

  // The return file's path, made with path operations: a relative name is taken inside the
  // working directory. The facade joins the directory and a name as texts, so it is given the
  // name that leads from the directory to that path.
  const fs::path diretorio = fs::u8path(opcoes.diretorio);
  const fs::path pedido = fs::u8path(opcoes.retorno);
  const fs::path retorno = (pedido.is_absolute() ? pedido : diretorio / pedido).lexically_normal();
  std::error_code erro;
  const fs::path pasta = retorno.has_parent_path() ? retorno.parent_path() : fs::path(".");
  if (fs::is_directory(diretorio, erro) && !fs::is_directory(pasta, erro)) {
    return recusa({"pasta_retorno_inexistente",
                   "a pasta do arquivo de retorno não existe: " + pasta.u8string()},
                  kFalhaEntradaSaida);
  }
  // Both sides absolute: a relative path of a file not yet there would not compare with the
  // directory's ("RETORNO.TXT" against ".").
  const fs::path relativo =
      fs::absolute(retorno, erro).lexically_relative(fs::absolute(diretorio, erro));
  if (erro || relativo.empty()) {
    return recusa({"pasta_retorno_inexistente",
                   "o arquivo de retorno não pode ser alcançado a partir do diretório de "
                   "trabalho: " +
                       retorno.u8string()},
                  kFalhaEntradaSaida);
  }
  const std::string nome =
      std::string(1, static_cast<char>(fs::path::preferred_separator)) + relativo.u8string();
  const std::string caminhoRetorno = retorno.u8string();

  if (resultado.tipo == Tipo::kNotas && !VerificadorInscricaoDisponivel()) {
    relator.Nota(kSemInscricao);
  }
  ValidacaoTarnWEB web;
  web.Hoje = RelogioDe(relator.Gerais());
  if (opcoes.tipoArquivo) web.TipoArquivo(*opcoes.tipoArquivo);
  if (opcoes.programaChamador) web.ProgramaChamador(*opcoes.programaChamador);
  const std::string& base = opcoes.diretorio;
  if (opcoes.tipo) {
    resultado.resultado =
        web.Valida_TIPO(opcoes.arquivo, nome, base, resultado.numeroRemessa, *opcoes.tipo);
  } else if (*resultado.tipo == Tipo::kNotas) {
    resultado.resultado =
        web.Valida_Dados_Tarnweb(opcoes.arquivo, nome, base, resultado.numeroRemessa);
  } else {
    resultado.resultado =
        web.Valida_Dados_Ficha_Cadastral(opcoes.arquivo, nome, base, resultado.numeroRemessa);
  }
  const quorv::Falha falha = web.UltimaFalha();
  if (!resultado.resultado && falha != Falha::RetornoNaoCriado &&
      falha != Falha::RetornoEhEntrada && EhArquivoComum(caminhoRetorno)) {
    resultado.arquivoRetorno = caminhoRetorno;
  }
  if (falha != Falha::Nenhuma) {
    std::string mensagem;
    if (falha == Falha::RetornoNaoCriado) {
      mensagem = "não foi possível criar o arquivo de retorno: " + caminhoRetorno;
    } else if (falha == Falha::EscritaRetorno) {
      mensagem = "falha ao gravar o arquivo de retorno (disco cheio ou erro de entrada e saída): " +
                 caminhoRetorno + "; ele está incompleto";
    } else if (falha == Falha::RetornoEhEntrada) {
      mensagem = "o arquivo de retorno " + caminhoRetorno +
                 " seria o próprio arquivo a validar ou o ADVERTENCIAS.TXT do diretório de "
                 "trabalho; nada foi validado nem gravado";
    } else {
      mensagem = MensagemDaFalha(falha, opcoes.arquivo, opcoes.diretorio);
    }
    resultado.erro = Erro{TipoDaFalha(falha), mensagem};
    resultado.codigoSaida = CodigoDaFalha(falha);
  } else {
    resultado.codigoSaida = resultado.resultado ? kAceito : kComAdvertencias;
  }
  relator.Web(resultado);
  return resultado.codigoSaida;
}

ResultadoMensagem BuscaMensagem(Tipo tipo, int codigo) {
  ResultadoMensagem resultado;
  resultado.tipo = tipo;
  resultado.codigo = codigo;
  const auto curto = static_cast<int16_t>(codigo);
  if (tipo == Tipo::kNotas) {
    resultado.mensagem = clsQuorvMsg().MensagemAdvertencia(curto);
    // The invoice catalogue answers this text for every code it does not hold.
    resultado.conhecido = resultado.mensagem != "Erro não cadastrado";
  } else {
    resultado.mensagem = clsQuorvMsgFichas().MensagemAdvertenciaFichas(curto);
    // The form catalogue answers the empty text for every code it does not hold.
    resultado.conhecido = !resultado.mensagem.empty();
  }
  resultado.codigoSaida = resultado.conhecido ? kAceito : kComAdvertencias;
  return resultado;
}

int MostraMensagem(Tipo tipo, int codigo, Relator& relator) {
  const ResultadoMensagem resultado = BuscaMensagem(tipo, codigo);
  relator.Mensagem(resultado);
  return resultado.codigoSaida;
}

int ListaAdvertencias(Tipo tipo, const std::string& arquivo, Relator& relator) {
  if (!EhArquivoComum(arquivo)) {
    return relator.Falha({"entrada_inacessivel", MotivoDaEntrada(arquivo)}, kFalhaEntradaSaida,
                         arquivo);
  }
  const ExameAdvertencias exame = ExaminaAdvertencias(arquivo);
  if (!exame.legivel) {
    return relator.Falha({"entrada_inacessivel", MotivoDaEntrada(arquivo)}, kFalhaEntradaSaida,
                         arquivo);
  }
  if (!exame.valido) {
    return relator.Falha(
        {"nao_e_advertencias",
         fmt::format("{} não é um arquivo de advertências: a linha {} não tem o código, as duas "
                     "chaves, o registro de {} caracteres e o número da linha separados por #",
                     arquivo, exame.linhaRuim, tipo == Tipo::kNotas ? 160 : 260)},
        kFalhaEntradaSaida, arquivo);
  }
  if (exame.tipo && *exame.tipo != tipo) {
    const char* outro = NomeDoTipo(*exame.tipo);
    return relator.Falha(
        {"nao_e_advertencias",
         fmt::format("{} é um arquivo de advertências de {}, não de {}; use: quorvvalida "
                     "advertencias {} {}",
                     arquivo, DescricaoDoTipo(*exame.tipo), DescricaoDoTipo(tipo), outro,
                     AspasDoShell(arquivo))},
        kFalhaEntradaSaida, arquivo);
  }
  if (relator.Gerais().json) {
    json_v1::EscreveListaAdvertencias(relator.Escritor(), arquivo, tipo, kAceito);
  } else if (!relator.Gerais().quieto) {
    ImprimeListaAdvertencias(arquivo, tipo);
  }
  return kAceito;
}

}  // namespace quorv::ferramenta
