-- Combines two truth values: and, or, exclusive or for bitoperation 0 to 2.
--   step combine:  one table
-- Latency 1 cycle.
library ieee;
use ieee.std_logic_1164.all;

entity xfc_logic is
  generic (bitoperation : natural);
  port (sysclk, reset, enable : in std_logic;
        aa : in std_logic;
        bb : in std_logic;
        cc : out std_logic);
end xfc_logic;

architecture rtl of xfc_logic is
  signal combined_d, combined : std_logic_vector(0 downto 0);
begin
  assert bitoperation <= 2 report "xfc_logic: bitoperation is 0 to 2" severity failure;

  -- combine
  combined_d(0) <= aa and bb when bitoperation = 0 else aa or bb when bitoperation = 1 else aa xor bb;

  combine_0 : entity work.xfc_register generic map (1, 1) port map (sysclk, enable, combined_d, combined);
  cc <= combined(0);
end rtl;
