#include "comandos.hpp"

#include <filesystem>
#include <system_error>

#include <fmt/core.h>
#include <nlohmann/json.hpp>

#include "progresso.hpp"
#include "quorvvalida/quorvvalida.hpp"
#include "saida.hpp"

namespace quorv::ferramenta {
namespace {

namespace fs = std::filesystem;

// The warnings file as the library names it: the directory, the platform's separator and
// ADVERTENCIAS.TXT.
std::string CaminhoAdvertencias(const std::string& diretorio) {
  return (fs::u8path(diretorio) / "ADVERTENCIAS.TXT").u8string();
}

bool Existe(const std::string& caminho) {
  std::error_code erro;
  return fs::exists(fs::u8path(caminho), erro);
}

// Why a file cannot be validated, told before the library is asked; empty when nothing is
// wrong that the tool can see.
std::string MotivoAparente(const std::string& arquivo, const std::string& diretorio) {
  std::error_code erro;
  if (!fs::is_directory(fs::u8path(diretorio), erro)) {
    return "diretório de trabalho não encontrado: " + diretorio;
  }
  if (!fs::exists(fs::u8path(arquivo), erro)) return "arquivo não encontrado: " + arquivo;
  if (fs::is_directory(fs::u8path(arquivo), erro)) return "o caminho é um diretório: " + arquivo;
  return {};
}

std::uint64_t Tamanho(const std::string& arquivo) {
  std::error_code erro;
  const auto tamanho = fs::file_size(fs::u8path(arquivo), erro);
  return erro ? 0 : tamanho;
}

Relogio RelogioDe(const OpcoesGerais& gerais) {
  if (!gerais.hoje) return {};
  const double hoje = *gerais.hoje;
  return [hoje] { return hoje; };
}

// Invoices are checked against the home state's registrations; tell once when nothing can
// check them.
void AvisaSemInscricao(Tipo tipo, const OpcoesGerais& gerais) {
  if (tipo != Tipo::kNotas || gerais.quieto || VerificadorInscricaoDisponivel()) return;
  fmt::print(stderr,
             "quorvvalida: aviso: a biblioteca de inscrição estadual (libDllInscE32.so) não foi "
             "encontrada; toda inscrição estadual de QZ será recusada. Informe-a com "
             "--inscricao-lib CAMINHO ou LD_LIBRARY_PATH.\n");
}

}  // namespace

void Erro(const std::string& mensagem) {
  fmt::print(stderr, "quorvvalida: {}\n", mensagem);
}

int ValidaArquivo(std::optional<Tipo> tipo, const OpcoesValidacao& opcoes,
                  const OpcoesGerais& gerais) {
  if (!tipo) {
    const Identificacao identificacao = IdentificaTipo(opcoes.arquivo);
    if (!identificacao.aberto) {
      Erro("não foi possível abrir o arquivo: " + opcoes.arquivo);
      return kNaoValidado;
    }
    if (!identificacao.identificado) {
      Erro(
          fmt::format("não foi possível identificar o tipo do arquivo {}: a primeira linha tem {} "
                      "caracteres, e são esperados 160 (notas fiscais de produtor) ou 260 (ficha "
                      "cadastral). Use 'quorvvalida notas' ou 'quorvvalida fichas' para escolher.",
                      opcoes.arquivo, identificacao.comprimento));
      return kNaoValidado;
    }
    tipo = identificacao.tipo;
  }
  AvisaSemInscricao(*tipo, gerais);

  Relatorio relatorio;
  relatorio.arquivo = opcoes.arquivo;
  relatorio.tipo = *tipo;
  relatorio.separador = opcoes.separador;
  relatorio.caminhoAdvertencias = CaminhoAdvertencias(opcoes.diretorio);
  const std::string motivo = MotivoAparente(opcoes.arquivo, opcoes.diretorio);

  BarraDeProgresso barra(!gerais.quieto && ErroEhTerminal(), *tipo, Tamanho(opcoes.arquivo));
  const auto progresso = [&barra](double& porcentagem) { barra.Atualiza(porcentagem); };
  if (*tipo == Tipo::kNotas) {
    Validacao validacao;
    validacao.Hoje = RelogioDe(gerais);
    validacao.Progress = progresso;
    relatorio.status = validacao.Valida_Dados(
        opcoes.arquivo, relatorio.numeroRemessa, opcoes.diretorio, opcoes.chaveRemessa,
        opcoes.chaveProcessamento, opcoes.origem, opcoes.servidor, opcoes.separador);
  } else {
    ValidacaoFichaCadastral validacao;
    validacao.Hoje = RelogioDe(gerais);
    validacao.FichaProgress = progresso;
    relatorio.status = validacao.Valida_Fichas(
        opcoes.arquivo, relatorio.numeroRemessa, opcoes.diretorio, opcoes.chaveRemessa,
        opcoes.chaveProcessamento, opcoes.origem, opcoes.servidor, opcoes.separador);
    if (relatorio.status == 9 && validacao.bTem_Erro_Grave) {
      relatorio.motivo = "falha inesperada numa verificação (um tipo de registro não numérico)";
    }
  }
  barra.Encerra();

  if (relatorio.status == 9 && relatorio.motivo.empty()) {
    relatorio.motivo =
        motivo.empty() ? "o arquivo ou o arquivo de advertências não pôde ser aberto" : motivo;
  }
  relatorio.temAdvertencias = Existe(relatorio.caminhoAdvertencias);
  if (gerais.json) {
    ImprimeJson(relatorio);
  } else if (!gerais.quieto) {
    ImprimeResumo(relatorio, gerais.limite);
  }
  if (relatorio.status == 9) {
    if (gerais.quieto || gerais.json) Erro("arquivo não validado: " + relatorio.motivo);
    return kNaoValidado;
  }
  return relatorio.temAdvertencias ? kComAdvertencias : kSemAdvertencias;
}

int ValidaWeb(const OpcoesWeb& opcoes, const OpcoesGerais& gerais) {
  const std::string motivo = MotivoAparente(opcoes.arquivo, opcoes.diretorio);
  if (!motivo.empty()) {
    Erro(motivo);
    return kNaoValidado;
  }
  std::optional<Tipo> tipo;
  if (!opcoes.tipo) {
    const Identificacao identificacao = IdentificaTipo(opcoes.arquivo);
    if (!identificacao.identificado) {
      Erro(
          fmt::format("não foi possível identificar o tipo do arquivo {} (primeira linha com {} "
                      "caracteres); informe --tipo P ou --tipo F",
                      opcoes.arquivo, identificacao.comprimento));
      return kNaoValidado;
    }
    tipo = identificacao.tipo;
  } else if (*opcoes.tipo == "P") {
    tipo = Tipo::kNotas;
  } else if (*opcoes.tipo == "F") {
    tipo = Tipo::kFichas;
  }
  if (tipo) AvisaSemInscricao(*tipo, gerais);

  ValidacaoTarnWEB web;
  web.Hoje = RelogioDe(gerais);
  if (opcoes.tipoArquivo) web.TipoArquivo(*opcoes.tipoArquivo);
  if (opcoes.programaChamador) web.ProgramaChamador(*opcoes.programaChamador);
  // The facade joins the directory and the return file's name as they are: the tool puts the
  // separator between them.
  const std::string nomeRetorno = "/" + opcoes.retorno;
  const std::string caminhoRetorno =
      fs::u8path(opcoes.diretorio + nomeRetorno).lexically_normal().u8string();
  std::string numero;
  bool resultado = false;
  if (opcoes.tipo) {
    resultado =
        web.Valida_TIPO(opcoes.arquivo, nomeRetorno, opcoes.diretorio, numero, *opcoes.tipo);
  } else if (*tipo == Tipo::kNotas) {
    resultado = web.Valida_Dados_Tarnweb(opcoes.arquivo, nomeRetorno, opcoes.diretorio, numero);
  } else {
    resultado =
        web.Valida_Dados_Ficha_Cadastral(opcoes.arquivo, nomeRetorno, opcoes.diretorio, numero);
  }
  const bool escreveuRetorno = !resultado && Existe(caminhoRetorno);

  if (gerais.json) {
    nlohmann::json documento = {
        {"arquivo", opcoes.arquivo},
        {"tipo", tipo ? nlohmann::json(NomeDoTipo(*tipo)) : nlohmann::json(nullptr)},
        {"resultado", resultado},
        {"numero_remessa", numero},
        {"arquivo_retorno", escreveuRetorno ? nlohmann::json(caminhoRetorno) : nullptr},
    };
    fmt::print("{}\n", documento.dump(-1, ' ', false, nlohmann::json::error_handler_t::replace));
  } else if (!gerais.quieto) {
    fmt::print("Arquivo:            {}\n", opcoes.arquivo);
    fmt::print("Tipo:               {}\n",
               tipo ? DescricaoDoTipo(*tipo) : "não reconhecido pela fachada (nada validado)");
    fmt::print("Número da remessa:  {}\n", numero.empty() ? "(não lido)" : numero);
    if (resultado) {
      fmt::print("Resultado:          aceito, sem arquivo de advertências\n");
    } else if (escreveuRetorno) {
      fmt::print("Resultado:          com advertências; arquivo de retorno em {}\n",
                 caminhoRetorno);
    } else {
      fmt::print("Resultado:          recusado\n");
    }
  }
  return resultado ? kSemAdvertencias : kComAdvertencias;
}

int MostraMensagem(Tipo tipo, const std::string& codigo, const OpcoesGerais& gerais) {
  std::size_t usados = 0;
  int valor = 0;
  try {
    valor = std::stoi(codigo, &usados);
  } catch (const std::exception&) {
    usados = 0;
  }
  if (usados != codigo.size() || valor < INT16_MIN || valor > INT16_MAX) {
    Erro("código de advertência inválido: " + codigo + " (use um número inteiro)");
    return kNaoValidado;
  }
  const auto curto = static_cast<int16_t>(valor);
  const std::string texto = tipo == Tipo::kNotas
                                ? clsQuorvMsg().MensagemAdvertencia(curto)
                                : clsQuorvMsgFichas().MensagemAdvertenciaFichas(curto);
  if (gerais.json) {
    fmt::print(
        "{}\n",
        nlohmann::json{{"tipo", NomeDoTipo(tipo)}, {"codigo", valor}, {"mensagem", texto}}.dump());
  } else if (!gerais.quieto) {
    fmt::print("{}\n", texto);
  }
  return kSemAdvertencias;
}

}  // namespace quorv::ferramenta
