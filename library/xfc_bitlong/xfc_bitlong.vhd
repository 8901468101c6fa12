-- Combines two integers of 32 bits bit by bit: and, or, exclusive or for bitoperation 0 to 2.
--   step combine:  one table a bit
-- Latency 1 cycle.
library ieee;
use ieee.std_logic_1164.all;

entity xfc_bitlong is
  generic (bitoperation : natural);
  port (sysclk, reset, enable : in std_logic;
        aa : in std_logic_vector(32 downto 1);
        bb : in std_logic_vector(32 downto 1);
        cc : out std_logic_vector(32 downto 1));
end xfc_bitlong;

architecture rtl of xfc_bitlong is
  signal combined_d : std_logic_vector(32 downto 1);
begin
  assert bitoperation <= 2 report "xfc_bitlong: bitoperation is 0 to 2" severity failure;

  -- combine
  combined_d <= aa and bb when bitoperation = 0 else aa or bb when bitoperation = 1 else aa xor bb;

  combine_0 : entity work.xfc_register generic map (32, 1) port map (sysclk, enable, combined_d, cc);
end rtl;
