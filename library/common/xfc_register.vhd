-- A register that a pipeline may have or not: q is d of the last cycle in which enable was 1, or d itself when
-- enabled is 0. Data needs no reset, so there is none. Every border between two steps is made of these alone; a
-- proof replaces this one file to compare the steps without their registers.
library ieee;
use ieee.std_logic_1164.all;

entity xfc_register is
  generic (width   : positive;   -- bits
           enabled : natural);   -- 1: a register, 0: wires
  port (sysclk, enable : in std_logic;
        d : in std_logic_vector(width - 1 downto 0);
        q : out std_logic_vector(width - 1 downto 0));
end xfc_register;

architecture rtl of xfc_register is
begin
  assert enabled <= 1 report "xfc_register: enabled is 0 or 1" severity failure;

  clocked : if enabled = 1 generate
    store : process (sysclk)
    begin
      if rising_edge(sysclk) then
        if enable = '1' then
          q <= d;
        end if;
      end if;
    end process;
  end generate;

  wires : if enabled = 0 generate
    q <= d;
  end generate;
end rtl;
