// The column lists that the copy routines move, exactly as the reports and
// their layouts agree on them: each name in a list exists in the source and in
// the work table. A constant's number is its count of names.
#pragma once

namespace lorvane::workdb::columns {

// the base list: FrmStampaCassa, FrmStampaRegistro, frmStampaRegistro2, FrmSommeConsegnate
inline constexpr char NoteTeste47[] =
    "id,DataRegistrazione,CodLocale,CodEsattore,CodCausale,Descrizione,Annotazioni,idOnda,"
    "Import,CodAgente,PercAgente,CodiceAzienda,ContoPercAgente,CodSubAgente,PercSubAgente,"
    "ContoPercSubAgente,Chiuso,Fatturato,Bloccato,idData,IdOperatore,TipologiaIncasso,"
    "GestioneDenaro,IncassoGettoni,IncassoTasse,UtileLocale,UtileNoleggiatore,VersatoALocale,"
    "FurtoLocale,FurtoNoleggiatore,AmmancoLocale,AmmancoNoleggiatore,StileIncasso,"
    "TotIntrodotto,TotUscite,TotPreu,TotAAMS,TotRETE,TotDaDividere,VarDebito,VarPrestito,"
    "Riscosso,Rimanenza,Arrotondamenti,Acconto,AnticipoLocale,AttesaFatture";

// FrmStampaIntrodotto
inline constexpr char NoteTeste48[] =
    "id,DataRegistrazione,CodLocale,CodEsattore,CodCausale,Descrizione,Annotazioni,idOnda,"
    "Import,CodAgente,PercAgente,CodiceAzienda,ContoPercAgente,CodSubAgente,PercSubAgente,"
    "ContoPercSubAgente,Chiuso,Fatturato,Bloccato,idData,IdOperatore,TipologiaIncasso,"
    "GestioneDenaro,IncassoGettoni,IncassoTasse,UtileLocale,UtileNoleggiatore,VersatoALocale,"
    "FurtoLocale,FurtoNoleggiatore,AmmancoLocale,AmmancoNoleggiatore,StileIncasso,"
    "TotIntrodotto,TotUscite,TotPreu,TotAAMS,TotRETE,TotDaDividere,VarDebito,VarPrestito,"
    "Riscosso,Rimanenza,Arrotondamenti,Acconto,AnticipoLocale,AttesaFatture,NumeroTerminale";

// FrmStampaAccontiRefill
inline constexpr char NoteTeste56[] =
    "id,DataRegistrazione,CodLocale,CodEsattore,CodCausale,Descrizione,Annotazioni,idOnda,"
    "Import,CodAgente,PercAgente,CodiceAzienda,ContoPercAgente,CodSubAgente,PercSubAgente,"
    "ContoPercSubAgente,Chiuso,Fatturato,Bloccato,idData,IdOperatore,TipologiaIncasso,"
    "GestioneDenaro,IncassoGettoni,IncassoTasse,UtileLocale,UtileNoleggiatore,VersatoALocale,"
    "FurtoLocale,FurtoNoleggiatore,AmmancoLocale,AmmancoNoleggiatore,StileIncasso,"
    "TotIntrodotto,TotUscite,TotPreu,TotAAMS,TotRETE,TotDaDividere,VarDebito,VarPrestito,"
    "Riscosso,Rimanenza,Arrotondamenti,Acconto,AnticipoLocale,AttesaFatture,VariazioneHopper,"
    "DaRiscuotere,DaRiscuotereTeorica,QuotaNolTeorica,RefillLocale,RefillNoleggiatore,"
    "TotTasse,Variazioni,Teorico";

// FrmStampaDifferenzaPreu
inline constexpr char NoteTeste57[] =
    "id,DataRegistrazione,CodLocale,CodEsattore,CodCausale,Descrizione,Annotazioni,idOnda,"
    "Import,CodAgente,PercAgente,CodiceAzienda,ContoPercAgente,CodSubAgente,PercSubAgente,"
    "ContoPercSubAgente,Chiuso,Fatturato,idFattura,Bloccato,idData,IdOperatore,"
    "TipologiaIncasso,GestioneDenaro,IncassoGettoni,IncassoTasse,UtileLocale,"
    "UtileNoleggiatore,VersatoALocale,FurtoLocale,FurtoNoleggiatore,AmmancoLocale,"
    "AmmancoNoleggiatore,StileIncasso,TotIntrodotto,TotUscite,TotPreu,TotAAMS,TotRETE,"
    "TotDaDividere,VarDebito,VarPrestito,Riscosso,Rimanenza,Arrotondamenti,Acconto,"
    "AnticipoLocale,AttesaFatture,VariazioneHopper,DaRiscuotere,DaRiscuotereTeorica,"
    "QuotaNolTeorica,RefillLocale,RefillNoleggiatore,TotTasse,Variazioni,Teorico";

// FrmStampaIntrodotto, FrmStampaRegistro, frmStampaRegistro2, FrmStampaSchedaLocale
inline constexpr char NoteRighe10[] =
    "IdTesta,Data,Descrizione,Dare,Avere,CodConto,codLocale,idData,idOperatore,Riga";

// FrmStampaSchedaContab
inline constexpr char NoteRighe11[] =
    "IdTesta,Data,Descrizione,Dare,Avere,CodConto,codLocale,idData,idOperatore,Riga,"
    "CodEsattore";

// the base list: FrmStampaRegistro, frmStampaRegistro2
inline constexpr char NoteIncassi61[] =
    "IdTesta,CodArticolo,LinkApparecchio,LinkScheda,CodLocale,DataIncasso,TipoIncasso,"
    "ParzialeIn,ParzialeOut,ContatoreIN,ContatoreOut,ContatoreMec1,ContatoreMec2,LivelloH1,"
    "LivelloH2,Livelloh3,TipoH1,TipoH2,TipoH3,PercPreu,PercAAMS,PercRete,TipoRete,Gettoni,"
    "ValoreGettone,Descrizione,Preu,AAms,Rete,IncassoNs,IncassoVs,RefillLocale,RefillGestore,"
    "Forzato,IdOperatore,idData,Fatturato,Ammanchi,Acconti,Furti,Cassetto,TipoCalcolo,"
    "PercLocale,PercNoleggiatore,NumGiorniIncasso,VecchioContatoreIN,VecchioContatoreOut,"
    "DataVecchioContatore,Riga,CatApparecchio,Import,CodConcessionario,VariazioneHopper,"
    "ForfaitIN,ForfaitOut,GiorniForfait,VecchioForfaitIN,VecchioForfaitOUT,UltimaLettura,"
    "MoltiplicatoreIN,MoltiplicatoreOUT";

// FrmStampaIntrodotto
inline constexpr char NoteIncassi62[] =
    "IdTesta,CodArticolo,LinkApparecchio,LinkScheda,CodLocale,DataIncasso,TipoIncasso,"
    "ParzialeIn,ParzialeOut,ContatoreIN,ContatoreOut,ContatoreMec1,ContatoreMec2,LivelloH1,"
    "LivelloH2,Livelloh3,TipoH1,TipoH2,TipoH3,PercPreu,PercAAMS,PercRete,TipoRete,Gettoni,"
    "ValoreGettone,Descrizione,Preu,AAms,Rete,IncassoNs,IncassoVs,RefillLocale,RefillGestore,"
    "Forzato,IdOperatore,idData,Fatturato,Ammanchi,Acconti,Furti,Cassetto,TipoCalcolo,"
    "PercLocale,PercNoleggiatore,NumGiorniIncasso,VecchioContatoreIN,VecchioContatoreOut,"
    "DataVecchioContatore,Riga,CatApparecchio,Import,CodConcessionario,VariazioneHopper,"
    "ForfaitIN,ForfaitOut,GiorniForfait,VecchioForfaitIN,VecchioForfaitOUT,UltimaLettura,"
    "MoltiplicatoreIN,MoltiplicatoreOUT,Contratto";

// FrmPercPagamentoP
inline constexpr char NoteIncassi76[] =
    "IdTesta,CodArticolo,LinkApparecchio,LinkScheda,CodLocale,DataIncasso,TipoIncasso,"
    "ParzialeIn,ParzialeOut,ContatoreIN,ContatoreOut,ContatoreMec1,ContatoreMec2,LivelloH1,"
    "LivelloH2,Livelloh3,TipoH1,TipoH2,TipoH3,PercPreu,PercAAMS,PercRete,TipoRete,Gettoni,"
    "ValoreGettone,Descrizione,Preu,AAms,Rete,IncassoNs,IncassoVs,RefillLocale,RefillGestore,"
    "Forzato,IdOperatore,idData,Fatturato,Ammanchi,Acconti,Furti,Cassetto,TipoCalcolo,"
    "PercLocale,PercNoleggiatore,NumGiorniIncasso,VecchioContatoreIN,VecchioContatoreOut,"
    "DataVecchioContatore,Riga,CatApparecchio,Import,CodConcessionario,VariazioneHopper,"
    "ForfaitIN,ForfaitOut,GiorniForfait,VecchioForfaitIN,VecchioForfaitOUT,UltimaLettura,"
    "MoltiplicatoreIN,MoltiplicatoreOUT,Chiuso,IdChiusura,Perc2Gestore,Perc3Gestore,"
    "PercSubAgente,scassettaSubAgente,Scassetta3Gestore,PercScassettoSub,PercScassetto3Gest,"
    "MonetaAggiunta,MonetaRitirata,BanconoteAggiunte,BanconoteRitirate,CodiceAzienda,"
    "Contratto";

// FrmStampaAccontiRefill
inline constexpr char NoteIncassi81[] =
    "IdTesta,CodArticolo,LinkApparecchio,LinkScheda,CodLocale,DataIncasso,TipoIncasso,"
    "ParzialeIn,ParzialeOut,ContatoreIN,ContatoreOut,ContatoreMec1,ContatoreMec2,LivelloH1,"
    "LivelloH2,Livelloh3,TipoH1,TipoH2,TipoH3,PercPreu,PercAAMS,PercRete,TipoRete,Gettoni,"
    "ValoreGettone,Descrizione,Preu,AAms,Rete,IncassoNs,IncassoVs,RefillLocale,RefillGestore,"
    "Forzato,IdOperatore,idData,Fatturato,Ammanchi,Acconti,Furti,Cassetto,TipoCalcolo,"
    "PercLocale,PercNoleggiatore,NumGiorniIncasso,VecchioContatoreIN,VecchioContatoreOut,"
    "DataVecchioContatore,Riga,CatApparecchio,Import,CodConcessionario,VariazioneHopper,"
    "ForfaitIN,ForfaitOut,GiorniForfait,VecchioForfaitIN,VecchioForfaitOUT,UltimaLettura,"
    "MoltiplicatoreIN,MoltiplicatoreOUT,Chiuso,IdChiusura,Perc2Gestore,Perc3Gestore,"
    "PercSubAgente,scassettaSubAgente,Scassetta3Gestore,PercScassettoSub,PercScassetto3Gest,"
    "MonetaAggiunta,MonetaRitirata,BanconoteAggiunte,BanconoteRitirate,CodiceAzienda,"
    "Contratto,HopperOLD1,HopperOLD2,HopperOLD3,Progressivo,TotaleTasse";

// FrmStampaCambiamonete, FrmStampaHopper: Contratto before CodiceAzienda, the last six reordered
inline constexpr char NoteIncassi81Saldi[] =
    "IdTesta,CodArticolo,LinkApparecchio,LinkScheda,CodLocale,DataIncasso,TipoIncasso,"
    "ParzialeIn,ParzialeOut,ContatoreIN,ContatoreOut,ContatoreMec1,ContatoreMec2,LivelloH1,"
    "LivelloH2,Livelloh3,TipoH1,TipoH2,TipoH3,PercPreu,PercAAMS,PercRete,TipoRete,Gettoni,"
    "ValoreGettone,Descrizione,Preu,AAms,Rete,IncassoNs,IncassoVs,RefillLocale,RefillGestore,"
    "Forzato,IdOperatore,idData,Fatturato,Ammanchi,Acconti,Furti,Cassetto,TipoCalcolo,"
    "PercLocale,PercNoleggiatore,NumGiorniIncasso,VecchioContatoreIN,VecchioContatoreOut,"
    "DataVecchioContatore,Riga,CatApparecchio,Import,CodConcessionario,VariazioneHopper,"
    "ForfaitIN,ForfaitOut,GiorniForfait,VecchioForfaitIN,VecchioForfaitOUT,UltimaLettura,"
    "MoltiplicatoreIN,MoltiplicatoreOUT,Chiuso,IdChiusura,Perc2Gestore,Perc3Gestore,"
    "PercSubAgente,scassettaSubAgente,Scassetta3Gestore,PercScassettoSub,PercScassetto3Gest,"
    "MonetaAggiunta,MonetaRitirata,BanconoteAggiunte,BanconoteRitirate,Contratto,"
    "CodiceAzienda,Progressivo,TotaleTasse,HopperOLD1,HopperOLD2,HopperOLD3";

// FrmStampaDifferenzaPreu
inline constexpr char NoteIncassi82[] =
    "IdTesta,CodArticolo,LinkApparecchio,LinkScheda,CodLocale,DataIncasso,TipoIncasso,"
    "ParzialeIn,ParzialeOut,ContatoreIN,ContatoreOut,ContatoreMec1,ContatoreMec2,LivelloH1,"
    "LivelloH2,Livelloh3,TipoH1,TipoH2,TipoH3,PercPreu,PercAAMS,PercRete,TipoRete,Gettoni,"
    "ValoreGettone,Descrizione,Preu,AAms,Rete,IncassoNs,IncassoVs,RefillLocale,RefillGestore,"
    "Forzato,IdOperatore,idData,Fatturato,idFattura,Ammanchi,Acconti,Furti,Cassetto,"
    "TipoCalcolo,PercLocale,PercNoleggiatore,NumGiorniIncasso,VecchioContatoreIN,"
    "VecchioContatoreOut,DataVecchioContatore,Riga,CatApparecchio,Import,CodConcessionario,"
    "VariazioneHopper,ForfaitIN,ForfaitOut,GiorniForfait,VecchioForfaitIN,VecchioForfaitOUT,"
    "UltimaLettura,MoltiplicatoreIN,MoltiplicatoreOUT,Chiuso,IdChiusura,Perc2Gestore,"
    "Perc3Gestore,PercSubAgente,scassettaSubAgente,Scassetta3Gestore,PercScassettoSub,"
    "PercScassetto3Gest,MonetaAggiunta,MonetaRitirata,BanconoteAggiunte,BanconoteRitirate,"
    "CodiceAzienda,Contratto,HopperOLD1,HopperOLD2,HopperOLD3,Progressivo,TotaleTasse";

// with id: FrmStampaCassa, FrmStampaRegistro
inline constexpr char AnagraficaLocali57[] =
    "id,CodLocale,CatLocale,TipoLocale,Insegna,Soprannome,CAP,Indirizzo,Localita,Citta,"
    "Provincia,NumCivico,Iva,CodFisc,tel,fax,cell,cell2,email,CodZona,tipologiaIncasso,"
    "incassoGettoni,IncassoTasse,GestioneDenaro,codTitolare,codGestore,codReferente,"
    "codEsattore,codAgente,dataAcquisizione,IdOperatore,idData,Sospeso,DataSosp,Descr,"
    "Rimanenza,CodiceAzienda,esTipoDitta,esCodEsercente,Cittadinanza,esDitta,esPiva,esCodf,"
    "esSedeVia,esSedeNr,esSedeCap,esSedeComune,esSedeProvincia,esCod86,esCod88,CodAttivita,"
    "CodMonopolio,CodCatastale,esMq,esNumCamere,CodiceConto,DataSinc";

// without id: the copy into AnagraficaLocali_Tmp
inline constexpr char AnagraficaLocali56[] =
    "CodLocale,CatLocale,TipoLocale,Insegna,Soprannome,CAP,Indirizzo,Localita,Citta,Provincia,"
    "NumCivico,Iva,CodFisc,tel,fax,cell,cell2,email,CodZona,tipologiaIncasso,incassoGettoni,"
    "IncassoTasse,GestioneDenaro,codTitolare,codGestore,codReferente,codEsattore,codAgente,"
    "dataAcquisizione,IdOperatore,idData,Sospeso,DataSosp,Descr,Rimanenza,CodiceAzienda,"
    "esTipoDitta,esCodEsercente,Cittadinanza,esDitta,esPiva,esCodf,esSedeVia,esSedeNr,"
    "esSedeCap,esSedeComune,esSedeProvincia,esCod86,esCod88,CodAttivita,CodMonopolio,"
    "CodCatastale,esMq,esNumCamere,CodiceConto,DataSinc";

// FrmSommeConsegnate
inline constexpr char AnagraficaLocali61[] =
    "CodLocale,CatLocale,TipoLocale,Insegna,Soprannome,CAP,Indirizzo,Localita,Citta,Provincia,"
    "NumCivico,Iva,CodFisc,tel,fax,cell,cell2,email,CodZona,tipologiaIncasso,incassoGettoni,"
    "IncassoTasse,GestioneDenaro,codTitolare,codGestore,codReferente,codEsattore,codAgente,"
    "dataAcquisizione,IdOperatore,idData,Sospeso,DataSosp,Descr,Rimanenza,CodiceAzienda,"
    "esTipoDitta,esCodEsercente,Cittadinanza,esDitta,esPiva,esCodf,esSedeVia,esSedeNr,"
    "esSedeCap,esSedeComune,esSedeProvincia,esCod86,esCod88,CodAttivita,CodMonopolio,"
    "CodCatastale,esMq,esNumCamere,CodiceConto,DataSinc,pwd,CCIAA,StatoDIA,TipoGettoni,"
    "TipoVia";

// FrmStampaAttoQuietanza
inline constexpr char AnagraficaLocaliCaratteristiche7[] =
    "id,CodLocale,CodCogetech,CodLottomatica,CodGamenet,CodAtlantis,CodGMatica";

// FrmStampaIntrodotto, FrmStampaCassa, FrmStampaRegistro, frmStampaRegistro2, FrmSommeConsegnate,
// FrmStampaAttoQuietanza
inline constexpr char AnagraficaAziende34[] =
    "id,CodiceAzienda,RagioneSociale,Ragione2,PIVA,CodFisc,Indirizzo,NumeroCivico,Cap,Citta,"
    "Prov,Tel,Fax,cell1,cell2,SedeOperativaProvincia,SedeOperativaIndirizzo,"
    "SedeOperativaNcivico,SedeOperativaCap,SedeOperativaLocalita,PercentualeDitta,NomeLegale,"
    "CognomeLegale,DataNascitaLegale,LuogoNascitaLegale,ProvNascitaLegale,CodFiscLegale,"
    "IndirizzoLegale,NumCivicoLegale,ComuneLegale,ProvinciaLegale,CapLegale,email,Import";

// FrmStampaQuietanza
inline constexpr char AnagraficaAziende35[] =
    "id,CodiceAzienda,RagioneSociale,Ragione2,PIVA,CodFisc,Indirizzo,NumeroCivico,Cap,Citta,"
    "Prov,Tel,Fax,cell1,cell2,SedeOperativaProvincia,SedeOperativaIndirizzo,"
    "SedeOperativaNcivico,SedeOperativaCap,SedeOperativaLocalita,PercentualeDitta,NomeLegale,"
    "CognomeLegale,DataNascitaLegale,LuogoNascitaLegale,ProvNascitaLegale,CodFiscLegale,"
    "IndirizzoLegale,NumCivicoLegale,ComuneLegale,ProvinciaLegale,CapLegale,email,Import,"
    "CodGestore";

// FrmSommeConsegnate
inline constexpr char AnagraficaOperatori33[] =
    "id,codiceOperatore,TXTPassword,Mansione,nome,cognome,descrizione,Indirizzo,numeroCivico,"
    "Citta,Cap,Provincia,Iva,CodFiscale,Tel,Cel,Fax,Email,Terminale,NumeroTerminale,"
    "TipoTerminale,Livello,Percentuale,AbilitazioneUtente,VistaCompleta,CodiceAzienda,"
    "idOperatore,idData,Sesso,NatoIl,ComuneN,ProvN,CodiceAutomezzo";

// FrmStampaAttoQuietanza
inline constexpr char AnagraficaOperatori22[] =
    "id,codiceOperatore,Mansione,nome,cognome,descrizione,Indirizzo,numeroCivico,Citta,Cap,"
    "Provincia,Iva,CodFiscale,Tel,Cel,Fax,Email,AbilitazioneUtente,Sesso,NatoIl,ComuneN,ProvN";

// FrmStampaQuietanza
inline constexpr char AnagraficaConcessionari25[] =
    "id,codiceConcessionario,mail,descrizione,Telefono,Fax,Contatto,TipoCostoRete,Fissogg,"
    "ImpiantoLocale,Soglia,ImpiantoMacchina,Percentuale,FormatoDocumenti,Ncivico,Provincia,"
    "CAP,Localita,Indirizzo,CodiceConto,Piva,CodFiscale,idOperatore,idData,Sistema";

// FrmStampaBilancio, FrmStampaSchedaLocale, FrmStampaSchedaContab
inline constexpr char AnagraficaPianoConti9[] =
    "id,CodiceConto,Descrizione,Sistema,TipoConto,LivelloConto,idData,idOperatore,Mastro";

// FrmStampaBilancio, FrmStampaSchedaLocale, FrmStampaSchedaContab
inline constexpr char Saldi10[] =
    "id,CodiceConto,Descrizione,dare,avere,saldo,Mastro,TipoConto,CodiceLocale,LivelloConto";

// the base list: FrmStampaIntrodotto, FrmStampaCassa, FrmStampaRegistro
inline constexpr char MagSchede55[] =
    "id,CodArticolo,NomeGioco,CodiceInterno,CodiceAAMS,StatoNullaosta,DataNullaosta,Nullaosta,"
    "NullaOstaProduttore,ProgrProduttore,AttSospensione,CodCE,CodiceABarre,CodFornitore,"
    "TipoMonetaGettoni,ValoreGettone,NumeroGettoniPartita,TipologiaIncasso,TipoPremio,"
    "ValorePremio,NumeroContatori,NumeroHopper,CodiceModello,CodiceProduttore,CodiceSoftware,"
    "SerialeScheda,StatoApparecchio,ProgressivoDistribuzione,AttestatoConformita,"
    "CodiceIdentificativoTemporaneo,NullaOstaDistribuzione,DataNoDistribuzione,Obsoleto,"
    "Venduto,Dismesso,DataDismissione,StatoDismissione,DismissioneAccettata,DataAccettazione,"
    "idData,IdOperatore,CodLocale,CodMagazzino,CodiceAzienda,MoltiplicatoreIN,"
    "MoltiplicatoreOut,CodConcessionario,DistintaBase,Omologa,import,IsiPagata,"
    "DataNullaOstaProd,UltimoIncasso,CnTotIN,CnTotOut";

// FrmPercPagamentoG, FrmPercPagamentoP
inline constexpr char MagSchede59[] =
    "id,CodArticolo,NomeGioco,CodiceInterno,CodiceAAMS,StatoNullaosta,DataNullaosta,Nullaosta,"
    "NullaOstaProduttore,ProgrProduttore,AttSospensione,CodCE,CodiceABarre,CodFornitore,"
    "TipoMonetaGettoni,ValoreGettone,NumeroGettoniPartita,TipologiaIncasso,TipoPremio,"
    "ValorePremio,NumeroContatori,NumeroHopper,CodiceModello,CodiceProduttore,CodiceSoftware,"
    "SerialeScheda,StatoApparecchio,ProgressivoDistribuzione,AttestatoConformita,"
    "CodiceIdentificativoTemporaneo,NullaOstaDistribuzione,DataNoDistribuzione,Obsoleto,"
    "Venduto,Dismesso,DataDismissione,StatoDismissione,DismissioneAccettata,DataAccettazione,"
    "idData,IdOperatore,CodLocale,CodMagazzino,CodiceAzienda,MoltiplicatoreIN,"
    "MoltiplicatoreOut,CodConcessionario,DistintaBase,Omologa,import,IsiPagata,"
    "DataNullaOstaProd,UltimoIncasso,CnTotIN,CnTotOut,AttualeH1,AttualeH2,AttualeH3,Acconto";

// FrmStampaHopper
inline constexpr char MagSchede63[] =
    "id,CodArticolo,NomeGioco,CodiceInterno,CodiceAAMS,StatoNullaosta,DataNullaosta,Nullaosta,"
    "NullaOstaProduttore,ProgrProduttore,AttSospensione,CodCE,CodiceABarre,CodFornitore,"
    "TipoMonetaGettoni,ValoreGettone,NumeroGettoniPartita,TipologiaIncasso,TipoPremio,"
    "ValorePremio,NumeroContatori,NumeroHopper,CodiceModello,CodiceProduttore,CodiceSoftware,"
    "SerialeScheda,StatoApparecchio,ProgressivoDistribuzione,AttestatoConformita,"
    "CodiceIdentificativoTemporaneo,NullaOstaDistribuzione,DataNoDistribuzione,Obsoleto,"
    "Venduto,Dismesso,DataDismissione,StatoDismissione,DismissioneAccettata,DataAccettazione,"
    "idData,IdOperatore,CodLocale,CodMagazzino,CodiceAzienda,MoltiplicatoreIN,"
    "MoltiplicatoreOut,CodConcessionario,DistintaBase,Omologa,import,IsiPagata,"
    "DataNullaOstaProd,UltimoIncasso,CnTotIN,CnTotOut,AttualeH1,AttualeH2,AttualeH3,Acconto,"
    "Contratto,AllarmeSoglia,AllarmeSogliaVal,Annotazioni";

// FrmStampaEtichette
inline constexpr char MagSchede66[] =
    "id,CodArticolo,NomeGioco,CodiceInterno,CodiceAAMS,StatoNullaosta,DataNullaosta,Nullaosta,"
    "NullaOstaProduttore,ProgrProduttore,AttSospensione,CodCE,CodiceABarre,CodFornitore,"
    "TipoMonetaGettoni,ValoreGettone,NumeroGettoniPartita,TipologiaIncasso,TipoPremio,"
    "ValorePremio,NumeroContatori,NumeroHopper,CodiceModello,CodiceProduttore,CodiceSoftware,"
    "SerialeScheda,StatoApparecchio,ProgressivoDistribuzione,AttestatoConformita,"
    "CodiceIdentificativoTemporaneo,NullaOstaDistribuzione,DataNoDistribuzione,Obsoleto,"
    "Venduto,Dismesso,DataDismissione,StatoDismissione,DismissioneAccettata,DataAccettazione,"
    "idData,IdOperatore,CodLocale,CodMagazzino,CodiceAzienda,MoltiplicatoreIN,"
    "MoltiplicatoreOut,CodConcessionario,DistintaBase,Omologa,import,IsiPagata,"
    "DataNullaOstaProd,UltimoIncasso,CnTotIN,CnTotOut,AttualeH1,AttualeH2,AttualeH3,Acconto,"
    "Contratto,AllarmeSoglia,AllarmeSogliaVal,Annotazioni,NoteLeasing,Leasing,NumeroScheda";

// FrmStampaCambiamonete: the 63 less the stock and bookkeeping columns
inline constexpr char MagSchede55Cambiamonete[] =
    "id,CodArticolo,NomeGioco,CodiceInterno,CodiceAAMS,StatoNullaosta,DataNullaosta,Nullaosta,"
    "NullaOstaProduttore,ProgrProduttore,AttSospensione,CodCE,CodiceABarre,CodFornitore,"
    "TipoMonetaGettoni,ValoreGettone,NumeroGettoniPartita,TipologiaIncasso,TipoPremio,"
    "ValorePremio,NumeroContatori,NumeroHopper,CodiceModello,CodiceProduttore,CodiceSoftware,"
    "SerialeScheda,StatoApparecchio,ProgressivoDistribuzione,AttestatoConformita,"
    "CodiceIdentificativoTemporaneo,NullaOstaDistribuzione,DataNoDistribuzione,"
    "DismissioneAccettata,DataAccettazione,CodLocale,CodMagazzino,CodiceAzienda,"
    "MoltiplicatoreIN,MoltiplicatoreOut,CodConcessionario,DistintaBase,Omologa,IsiPagata,"
    "DataNullaOstaProd,UltimoIncasso,CnTotIN,CnTotOut,AttualeH1,AttualeH2,AttualeH3,Acconto,"
    "Contratto,AllarmeSoglia,AllarmeSogliaVal,Annotazioni";

// FrmStampaEtichetteMobili
inline constexpr char MagMobili51[] =
    "id,CodArticolo,NomeMobile,CodiceInterno,CodiceABarre,Peso,DimensioniLung,DimensioniAlt,"
    "DimensioniProf,NumeriSerrature,Plancia,TipoAlimentatore,TipoCablaggio,Gettoniera,"
    "NumeroPostazioni,TipoMonitor,idData,IdOperatore,codLocale,codMagazzino,AltriDati,"
    "NumeroPulsanti,TipoPulsanti,NumeroHopper,TipoHopper,MaxPremi,Tecnologia,TipologiaGioco,"
    "ElencoGiochi,MisureVetroA,MisureVetroB,Obsoleto,Venduto,Dismesso,DataDismesso,"
    "StatoDismesso,DismissioneAccettata,DataAccettazione,RFID,CE,CodiceAzienda,DistintaBase,"
    "import,TipoH1,TipoH2,TipoH3,NumH1,NumH2,NumH3,ProprietaMoneta,NumeroMobile";

// FrmStampaAttoQuietanza
inline constexpr char DocTeste70[] =
    "id,DataDoc,TipoDoc,NumDoc,DataReg,DataCompetenzaIVA,TipoIntestazione,CodIntestazione,"
    "TipoSpettabile,CodSpettabile,idCauMov,CodMagazzino,Registro,NostroRif,VostroRif,CodBanca,"
    "CodAgente,CodArea,CodBoll,CodVettore,CodPorto,CodAcura,CodCausale,CodPagamento,"
    "CodListino,TotMerce,TotOmaggi,TotImponibile,TotNonImp,TotImposta,TotDoc,TotIncassoLordo,"
    "TotPremi,TotPREU,TotDaRipartire,Totrete,TotAAMS,Acconto,Contrassegno,Abbuono,TotDaPagare,"
    "Intra,InSospensione,Emesso,Registrato,Magazzino,Stampato,Effetti,AddebitaBolli,"
    "AddebitaSpese,SegueFattura,AccontoInCassa,DocTemporaneo,Chiuso,ScadenzeInFattura,"
    "DataEvasione,NrPartita,IDPrimaNota,Annotazioni,CodiceAzienda,idData,idOperatore,"
    "DestDiversa,NomeDest,Indirizzo,Citta,cap,provincia,Aspetto,Sezionale";

// FrmStampaAttoQuietanza
inline constexpr char DocRighe62[] =
    "id,NumDoc,IdDoc,NrRiga,TipoRiga,RifDoc,TipoLinkDoc,TestaLinkDoc,TipoArticolo,CodArt,"
    "Descrizione,UnMis,Qta,ValUnit,Sconto1,Sconto2,ImpSconto,CodIva,Provv,ImpProvv,CodConto,"
    "Imponibile,Imposta,Totale,DataConsegna,QtaLink,NrColli,PesoNetto,PesoLordo,NonStampa,"
    "DataPresConsegna,Cubaggio,Commessa,CentroDiCosto,VoceDiSpesa,InputProduzione,RigaChiusa,"
    "Preu,AAms,Rete,Introdotto,Uscire,TipoRete,percRete,PercAAms,PercPreu,aggioLocale,"
    "Noleggiatore,PercLocale,PercNoleggiatore,PercAgente,AggioAgente,Rimanente,idOperatore,"
    "idData,SubAgentePerc,SubAgenteValore,SubAgenteSCassetto,terzoGsCassetto,CodiceAzienda,"
    "CodAAMS,NomeApparecchio";

// FrmStampaQuietanza
inline constexpr char QuietanzaTesta32[] =
    "aams,Aggio,Bollo,Codice,CodiceAzienda,CodLocale,CodConcessionario,DaData,Data,email,"
    "GeneratoRid,id,idContab,idData,IdOperatore,ImportoBollo,NumeroDoc,"
    "PercRecuperoDepositoCauzionale,PercRecuperoFondoCassa,Periodo,preu,"
    "RecuperoDepositoCauzionale,RecuperoFondoCassa,rete,Saldo,SommaIN,SommaOUT,spese,Stato,"
    "TipoCalcolo,TipoDocumento,TotaleDocumento";

// FrmStampaQuietanza, FrmStampaIntrodottoDistinta
inline constexpr char QuietanzaRighe45[] =
    "AAMS,aData,Aggio2Gestore,Aggio3Gestore,AWP,Codice2Gestore,Codice3Gestore,CodiceAzienda,"
    "CodiceSubAgente,CodLocale,ContatoreIN,ContatoreOUT,DaData,DataInst,DataRitiro,ForfIN,"
    "ForfOUT,gg,GiorniForfe,IdData,IdOperatore,idTesta,Intervento,LetturaPrecedente,"
    "LinkScheda,NomeAwp,OldIN,OldOut,ParteLocale,Percentuale,Percentuale2gestore,"
    "Percentuale3Gestore,PercScassetto2gestore,PercScassetto3Gestore,PercScassettoSub,Preu,"
    "RETE,Riga,Scassetto2gestore,Scassetto3Gestore,ScassettoSub,TipoCalcolo,UltimaLettura,"
    "VecchioForfeIN,VecchioForfeOUT";

}  // namespace lorvane::workdb::columns
